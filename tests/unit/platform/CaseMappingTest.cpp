#include "platform/CaseMapping.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace zorvane {
namespace {

std::u16string UnitsOf(char32_t point) {
    if (point <= 0xFFFF) return {static_cast<char16_t>(point)};
    return {static_cast<char16_t>(0xD7C0 + (point >> 10)),
            static_cast<char16_t>(0xDC00 + (point & 0x3FF))};
}

TEST(CompareTexts_Text, FollowsSimpleFoldingAndThenUnits) {
    const struct {
        const char* what;
        std::u16string left;
        std::u16string right;
        int order;
    } rows[] = {
        {"case alone", u"ABC", u"abc", 0},
        {"underscore before letters of either case", u"_", u"A", -1},
        {"underscore before a small letter", u"_", u"a", -1},
        {"shorter first", u"ab", u"ABC", -1},
        {"empty first", u"", u"a", -1},
        {"both empty", u"", u"", 0},
        {"Kelvin sign is k", u"\u212A", u"K", 0},
        {"Angstrom sign is a with ring", u"\u212B", u"\u00E5", 0},
        {"long s is s", u"\u017F", u"S", 0},
        {"sharp s is not ss", u"\u00DF", u"ss", 1},
        {"capital sharp s is sharp s", u"\u1E9E", u"\u00DF", 0},
        {"the three sigmas", u"\u03A3\u03C3\u03C2", u"\u03C2\u03A3\u03C3", 0},
        {"dotted capital I is no i", u"\u0130", u"i", 1},
        {"dotless i is no I", u"\u0131", u"I", 1},
        {"micro sign is mu", u"\u00B5", u"\u03BC", 0},
        {"Deseret pair", u"\xD801\xDC00", u"\xD801\xDC28", 0},
        {"a lone high half stays", u"\xD801", u"\xD801\xDC00", -1},
        {"lone halves compare as units", u"\xDC00", u"\xD801", 1},
        {"letters beyond the plane sort by their units", u"\xD801\xDC00", u"\uFF01", -1},
        {"embedded zero is a unit", std::u16string(u"a\0b", 3), std::u16string(u"a\0B", 3), 0},
        {"what stands behind a zero counts", std::u16string(u"a\0b", 3), u"a", 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CompareTexts(row.left, row.right, CompareMode::Text), row.order) << row.what;
        EXPECT_EQ(CompareTexts(row.right, row.left, CompareMode::Text), -row.order) << row.what;
        EXPECT_EQ(EqualTexts(row.left, row.right, CompareMode::Text), row.order == 0) << row.what;
    }
}

TEST(CompareTexts_Binary, ComparesUnsignedUnits) {
    EXPECT_EQ(CompareTexts(u"A", u"a", CompareMode::Binary), -1);
    EXPECT_EQ(CompareTexts(u"\xFFFF", u"\x0041", CompareMode::Binary), 1);
    EXPECT_EQ(CompareTexts(u"ab", u"abc", CompareMode::Binary), -1);
    EXPECT_EQ(CompareTexts(u"\xE000", u"\xD801\xDC00", CompareMode::Binary), 1);
    EXPECT_FALSE(EqualTexts(u"A", u"a", CompareMode::Binary));
}

TEST(LowerCase, MapsPointByPointAndSharesWhatStays) {
    const struct {
        const char* what;
        std::u16string text;
        std::u16string lower;
    } rows[] = {
        {"letters", u"A_zZ9", u"a_zz9"},
        {"dotted capital I loses its dot", u"\u0130", u"i"},
        {"final sigma stays final", u"\u03A3\u03C2", u"\u03C3\u03C2"},
        {"capital sharp s", u"\u1E9E", u"\u00DF"},
        {"Kelvin sign", u"\u212A", u"k"},
        {"Deseret", u"\xD801\xDC00", u"\xD801\xDC28"},
        {"lone halves", u"A\xD801", u"a\xD801"},
        {"title-case pair letter", u"\u01C5", u"\u01C6"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LowerCase(row.text), Text(row.lower)) << row.what;
        EXPECT_TRUE(EqualLowerCase(row.text, row.lower)) << row.what;
    }
    const Text lower(u"already lower \xD801\xDC28");
    EXPECT_TRUE(LowerCase(lower).SharesWith(lower));
    EXPECT_FALSE(EqualLowerCase(u"\u03C2", u"\u03C3"));  // folding joins them, lower case does not
}

// A hash that parts what an equality joins would lose keys that are there.
TEST(HashFolded, AgreesWithBothEqualitiesOverAllCodePoints) {
    std::map<char32_t, std::vector<char32_t>> joined;
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        const char32_t folded = FoldCodePoint(point);
        const char32_t lower = LowerCodePoint(point);
        ASSERT_EQ(FoldCodePoint(folded), folded) << "folding twice moves " << unsigned(point);
        ASSERT_EQ(UnitsOf(folded).size(), UnitsOf(point).size()) << unsigned(point);
        ASSERT_EQ(UnitsOf(lower).size(), UnitsOf(point).size()) << unsigned(point);
        const std::u16string units = UnitsOf(point);
        if (folded != point) {
            ASSERT_TRUE(EqualTexts(units, UnitsOf(folded), CompareMode::Text)) << unsigned(point);
            ASSERT_EQ(HashFolded(units), HashFolded(UnitsOf(folded))) << unsigned(point);
            joined[folded].push_back(point);
        }
        if (lower != point) {
            ASSERT_EQ(LowerCase(units), Text(UnitsOf(lower))) << unsigned(point);
            ASSERT_EQ(HashFolded(units), HashFolded(UnitsOf(lower))) << unsigned(point);
        }
    }
    EXPECT_GT(joined.size(), 1300u);  // the table is there, not empty
}

TEST(HashFolded, DependsOnEveryUnitAndOnTheLength) {
    const std::u16string base = u"abcdefghijk";
    for (std::size_t i = 0; i < base.size(); ++i) {
        std::u16string other = base;
        other[i] = u'z';
        EXPECT_NE(HashFolded(other), HashFolded(base)) << i;
        EXPECT_NE(HashFolded(base.substr(0, i)), HashFolded(base)) << i;
    }
    EXPECT_NE(HashFolded(std::u16string(1, u'\0')), HashFolded({}));
}

}  // namespace
}  // namespace zorvane
