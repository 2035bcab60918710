#include "platform/Text.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

#include "platform/CaseMapping.h"

namespace zorvane {
namespace {

using namespace std::string_literals;

std::u16string UnitsOf(const Text& text) {
    return std::u16string(text.Units());
}

TEST(Text_FromUtf8, EachMalformedByteBecomesOneReplacement) {
    const struct {
        const char* what;
        std::string bytes;
        std::u16string units;
    } rows[] = {
        {"plain", "abc", u"abc"},
        {"nothing", "", u""},
        {"embedded zero", "a\0b"s, u"a\0b"s},
        {"two bytes", "\xC3\xA9", u"\u00E9"},
        {"three bytes", "\xE2\x82\xAC", u"\u20AC"},
        {"four bytes make a pair", "\xF0\x90\x90\x80", u"\xD801\xDC00"},
        {"last point", "\xF4\x8F\xBF\xBF", u"\xDBFF\xDFFF"},
        {"beyond the last point", "\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"first above F4", "\xF5z", u"\xFFFDz"},
        {"FE and FF", "\xFE\xFF", u"\xFFFD\xFFFD"},
        {"stray continuation", "a\x80z", u"a\xFFFDz"},
        {"two bytes, overlong", "\xC0\xAF\xC1\xBF", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"three bytes, overlong", "\xE0\x9F\xBF", u"\xFFFD\xFFFD\xFFFD"},
        {"least of three bytes", "\xE0\xA0\x80", u"\u0800"},
        {"four bytes, overlong", "\xF0\x8F\xBF\xBF", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"surrogate", "\xED\xA0\x80", u"\xFFFD\xFFFD\xFFFD"},
        {"just below surrogates", "\xED\x9F\xBF", u"\xD7FF"},
        {"cut after one of two", "\xC3", u"\xFFFD"},
        {"cut after two of three", "\xE2\x82", u"\xFFFD\xFFFD"},
        {"cut after three of four", "\xF0\x90\x90", u"\xFFFD\xFFFD\xFFFD"},
        {"broken by a letter", "\xE2\x82z", u"\xFFFD\xFFFDz"},
        {"broken by a good character", "\xC3\xC3\xA9", u"\xFFFD\u00E9"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(UnitsOf(Text(std::string_view(row.bytes))), row.units) << row.what;
    }
}

TEST(Text_ToUtf8, ALoneSurrogateBecomesAReplacementAndAPairOneCharacter) {
    const struct {
        const char* what;
        std::u16string units;
        std::string bytes;
    } rows[] = {
        {"pair", u"\xD801\xDC00", "\xF0\x90\x90\x80"},
        {"high at the end", u"a\xD801", "a\xEF\xBF\xBD"},
        {"high before a letter", u"\xD801z", "\xEF\xBF\xBDz"},
        {"low alone", u"\xDC00z", "\xEF\xBF\xBDz"},
        {"two highs, one low", u"\xD801\xD801\xDC00", "\xEF\xBF\xBD\xF0\x90\x90\x80"},
        {"embedded zero", u"a\0b"s, "a\0b"s},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Text(row.units).ToUtf8(), row.bytes) << row.what;
    }
}

TEST(Text_Utf8, EveryCodePointComesBack) {
    for (char32_t point = 0; point <= 0x10FFFF; point += point < 0x3000 ? 1 : 97) {
        if (IsSurrogate(point)) continue;
        std::u16string units;
        if (point > 0xFFFF) {
            units = {static_cast<char16_t>(0xD7C0 + (point >> 10)),
                     static_cast<char16_t>(0xDC00 + (point & 0x3FF))};
        } else {
            units = {static_cast<char16_t>(point)};
        }
        ASSERT_EQ(UnitsOf(Text(Text(units).ToUtf8())), units) << static_cast<unsigned>(point);
    }
}

TEST(Text_Copy, SharesItsBlockAndOutlivesItsSource) {
    Text copy;
    {
        const Text source(u"shared");
        copy = source;
        EXPECT_TRUE(copy.SharesWith(source));
    }
    EXPECT_EQ(copy, Text(u"shared"));
    EXPECT_FALSE(copy.SharesWith(Text(u"shared")));
}

TEST(Text_Assign, ToItselfKeepsTheUnits) {
    Text text(u"kept");
    Text& same = text;
    text = same;
    EXPECT_EQ(text, Text(u"kept"));
    text = std::move(same);
    EXPECT_EQ(text, Text(u"kept"));
}

TEST(Text_Move, LeavesTheEmptyText) {
    Text source(u"gone");
    const Text taken(std::move(source));
    EXPECT_TRUE(source.Empty());  // NOLINT: the state after a move is promised
    EXPECT_EQ(taken.Length(), 4);
}

TEST(Text_Plus, JoinsAndSharesWhereOneSideIsEmpty) {
    const Text left(u"a\0"s);
    EXPECT_EQ(left + Text(u"b"), Text(u"a\0b"s));
    EXPECT_TRUE((left + Text()).SharesWith(left));
    EXPECT_TRUE((Text() + left).SharesWith(left));
}

TEST(Text_Make, UnitsThatFillLeavesAreZero) {
    const Text made = Text::Make(3, [](char16_t* units) { units[1] = u'x'; });
    EXPECT_EQ(UnitsOf(made), u"\0x\0"s);
    EXPECT_TRUE(Text::Make(0, [](char16_t*) { FAIL(); }).Empty());
}

TEST(Text_Make, RefusesALengthThatPositionsCannotName) {
    EXPECT_THROW(static_cast<void>(Text::Make(0x40000000, [](char16_t*) {})), std::length_error);
}

TEST(Text_FoldedHash, IsTheSameForEqualUnitsInTwoBlocksAndNeverZero) {
    EXPECT_EQ(Text(u"Zorvane").FoldedHash(), Text(u"zORVANE").FoldedHash());
    EXPECT_NE(Text(u"Zorvane").FoldedHash(), Text(u"Zorvan").FoldedHash());
    EXPECT_NE(Text().FoldedHash(), 0u);
    EXPECT_EQ(Text().FoldedHash(), HashFolded({}));
}

TEST(Text_Print, ShowsItsUnitsAsUtf8) {
    std::ostringstream out;
    out << Text(u"caf\u00E9");
    EXPECT_EQ(out.str(), "caf\xC3\xA9");
}

}  // namespace
}  // namespace zorvane
