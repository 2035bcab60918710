#include "zorvane/platform/CaseMapping.h"

#include <unordered_set>

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

using namespace std::string_literals;

TEST(CompareTexts, FollowsSimpleFoldingOrUnsignedUnits) {
    const std::tuple<const char*, std::u16string, std::u16string, int, int> rows[] = {
        {"case alone", u"a\0B"s, u"A\0b"s, 0, 1},
        {"underscore before letters of either case", u"_", u"A", -1, 1},
        {"shorter first", u"ab", u"abC", -1, -1},
        {"what stands behind a zero counts", u"a\0"s, u"a", 1, 1},
        {"Kelvin, Angstrom, long s, capital sharp s", u"\u212A\u212B\u017F\u1E9E",
         u"K\u00E5S\u00DF", 0, 1},
        {"the three sigmas, micro, Deseret", u"\u03A3\u03C3\u03C2\u00B5\xD801\xDC00",
         u"\u03C2\u03A3\u03C3\u03BC\xD801\xDC28", 0, -1},
        {"sharp s is not ss", u"\u00DF", u"ss", 1, 1},
        {"dotted capital I is no i", u"\u0130", u"i", 1, 1},
        {"dotless i is no I", u"\u0131", u"I", 1, 1},
        {"a lone high half stays", u"\xD801", u"\xD801\xDC00", -1, -1},
        {"lone halves compare as units", u"\xDC00", u"\xD801", 1, 1},
        {"letters beyond the plane sort by their units", u"\xD801\xDC00", u"\uFF01", -1, -1},
        {"both empty", u"", u"", 0, 0},
    };
    for (const auto& [what, left, right, text, binary] : rows) {
        EXPECT_EQ(CompareTexts(left, right, CompareMode::Text), text) << what;
        EXPECT_EQ(CompareTexts(right, left, CompareMode::Text), -text) << what;
        EXPECT_EQ(EqualTexts(left, right, CompareMode::Text), text == 0) << what;
        EXPECT_EQ(CompareTexts(left, right, CompareMode::Binary), binary) << what;
        EXPECT_EQ(EqualTexts(left, right, CompareMode::Binary), binary == 0) << what;
    }
}

TEST(LowerCase, MapsPointByPointAndSharesWhatStays) {
    const std::u16string upper = u"A_zZ9\u0130\u03A3\u03C2\u1E9E\u212A\xD801\xDC00\u01C5Z\xD801";
    const std::u16string lower = u"a_zz9i\u03C3\u03C2\u00DFk\xD801\xDC28\u01C6z\xD801";
    EXPECT_EQ(LowerCase(upper), Text(lower));
    EXPECT_TRUE(EqualLowerCase(upper, lower));
    const Text stays(lower);
    EXPECT_TRUE(LowerCase(stays).SharesWith(stays));
    EXPECT_FALSE(EqualLowerCase(lower, lower + u"z"));
    EXPECT_FALSE(EqualLowerCase(u"\u03C2", u"\u03C3"));  // folding joins them, lower case does not
}

// A hash that parts what an equality joins would lose keys that are there.
TEST(HashFolded, AgreesWithBothEqualitiesOverAllCodePoints) {
    int moved = 0;
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        const char32_t folded = FoldCodePoint(point);
        ASSERT_EQ(FoldCodePoint(folded), folded) << "folding twice moves " << unsigned(point);
        const std::u16string units = UnitsOf(point);
        for (const char32_t other : {folded, LowerCodePoint(point)}) {
            ASSERT_EQ(UnitsOf(other).size(), units.size()) << unsigned(point);
            if (other == point) continue;
            ++moved;
            // By itself, and where it takes its neighbours out of what is mapped at once.
            ASSERT_EQ(HashFolded(units), HashFolded(UnitsOf(other))) << unsigned(point);
            ASSERT_EQ(HashFolded(u"\u00D7\u00DFZz" + units + u"\u00B5[\u00DE@Q"),
                      HashFolded(u"\u00D7\u00DFZz" + UnitsOf(other) + u"\u00B5[\u00DE@Q"))
                << unsigned(point);
            ASSERT_TRUE(EqualTexts(units, UnitsOf(folded), CompareMode::Text)) << unsigned(point);
        }
        ASSERT_EQ(LowerCase(units), Text(UnitsOf(LowerCodePoint(point)))) << unsigned(point);
    }
    EXPECT_GT(moved, 2600);  // the tables are there, not empty
}

// Texts of up to 7, 8 to 40 and more units are taken in different steps, which overlap.
TEST(HashFolded, DependsOnEveryUnitAndOnTheLengthAsEqualityDoes) {
    for (const std::size_t length :
         {1u, 2u, 3u, 4u, 7u, 8u, 9u, 15u, 16u, 17u, 31u, 32u, 33u, 39u, 40u, 41u, 49u, 95u}) {
        const std::u16string base(length, u'a');
        const std::string bytes(length, 'a');
        for (std::size_t i = 0; i < length; ++i) {
            std::u16string other = base;
            other[i] = u'z';
            std::string otherBytes = bytes;
            otherBytes[i] = 'z';
            EXPECT_NE(HashBytes(otherBytes), HashBytes(bytes)) << i << " of " << length;
            EXPECT_NE(HashBytes(bytes.substr(0, i)), HashBytes(bytes)) << i << " of " << length;
            EXPECT_EQ(HashBytes(std::string_view(otherBytes).substr(0, i)),
                      HashBytes(bytes.substr(0, i)))
                << "what stands behind is looked at";
            EXPECT_NE(HashFolded(other), HashFolded(base)) << i << " of " << length;
            EXPECT_NE(HashFolded(base.substr(0, i)), HashFolded(base)) << i << " of " << length;
            EXPECT_FALSE(EqualTexts(other, base, CompareMode::Binary)) << i << " of " << length;
        }
        EXPECT_TRUE(EqualTexts(std::u16string(base), base, CompareMode::Binary)) << length;
    }
    EXPECT_NE(HashFolded(std::u16string(1, u'\0')), HashFolded({}));
}

// The one machine instruction and what stands for it elsewhere.
TEST(ProductsOfHalves, AreTheSameWithAndWithoutVectors) {
    for (const TwoWords words :
         {TwoWords{0, ~0ull}, TwoWords{0xFFFFFFFF00000002, 0x1234567880000001},
          TwoWords{0x8000000080000000, 0x00000001FFFFFFFF}}) {
        const auto plain = PlainProductsOfHalves(words);
        const auto wide = std::bit_cast<TwoWords>(ProductsOfHalves(std::bit_cast<TwoSums>(words)));
        EXPECT_EQ(wide.First, plain.First);
        EXPECT_EQ(wide.Second, plain.Second);
    }
}

// Keys as people and programs make them: none may come together in a few hashes.
TEST(HashFolded, KeepsApartWhatDiffersInFewUnitsOfEachKind) {
    const struct {
        const char* what;
        std::size_t step;  // a digit of a counted number stands in every so many units,
        int base;          // to this base,
        int lowest;        // 0 as this unit,
        int apart = 1;     // and the next so far from it;
        std::u16string before = u"", head = u"", tail = u"";  // each digit, and the whole key
    } rows[] = {
        {"counted up", 1, 10, u'0', 1, u"", u"String"},
        {"in a long name", 1, 10, u'0', 1, u"", u"a rather long name, of which number ",
         u" is one"},
        {"every second unit", 2, 10, u'0'},
        {"every fourth unit", 4, 10, u'0'},
        {"every eighth unit", 8, 10, u'0'},
        {"the top bit of every fourth unit", 4, 2, u'0', 0x8000},
        {"Chinese", 1, 200, 0x4E00},
        {"emoji", 1, 60, 0xDE00, 1, u"\xD83D"},
    };
    constexpr std::size_t kKeys = 20'000;
    for (const auto& row : rows) {
        std::unordered_set<std::uint32_t> hashes;
        for (std::size_t i = 0; i < kKeys; ++i) {
            std::u16string key = row.head;
            for (int left = (1 << 15) + static_cast<int>(i); left > 0; left /= row.base) {
                key += std::u16string(row.step - 1, u'x') + row.before;
                key += static_cast<char16_t>(row.lowest + left % row.base * row.apart);
            }
            hashes.insert(HashFolded(key + row.tail));
        }
        EXPECT_GT(hashes.size(), kKeys * 99 / 100) << row.what;
    }
}

}  // namespace
}  // namespace zorvane
