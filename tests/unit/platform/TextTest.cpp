#include "zorvane/platform/Text.h"

#include "tests/support/Testing.h"
#include "zorvane/platform/CaseMapping.h"

namespace zorvane {
namespace {

using namespace std::string_literals;

TEST(Text_FromUtf8, EachMalformedByteBecomesOneReplacement) {
    const std::tuple<const char*, std::string, std::u16string> rows[] = {
        {"one to four bytes", "a\0\xC3\xA9\xE2\x82\xAC\xF0\x90\x90\x80"s,
         u"a\0\u00E9\u20AC\xD801\xDC00"s},
        {"beyond the last point", "\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"bytes that begin nothing", "\xF5z\xFE\xFF\x80", u"\xFFFDz\xFFFD\xFFFD\xFFFD"},
        {"two bytes, overlong", "\xC0\xAF\xC1\xBF", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"three bytes, overlong", "\xE0\x9F\xBF", u"\xFFFD\xFFFD\xFFFD"},
        {"four bytes, overlong", "\xF0\x8F\xBF\xBF", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"surrogate", "\xED\xA0\x80", u"\xFFFD\xFFFD\xFFFD"},
        {"cut after one of two", "\xC3", u"\xFFFD"},
        {"cut after two of three", "\xE2\x82", u"\xFFFD\xFFFD"},
        {"cut after three of four", "\xF0\x90\x90", u"\xFFFD\xFFFD\xFFFD"},
        {"broken by a letter", "\xE2\x82z", u"\xFFFD\xFFFDz"},
        {"broken by a good character", "\xC3\xC3\xA9", u"\xFFFD\u00E9"},
    };
    for (const auto& [what, bytes, units] : rows) {
        const std::string more = bytes + "\x80\x80\x80";  // what stands behind is not looked at
        EXPECT_EQ(Text(std::string_view(more).substr(0, bytes.size())).Units(), units) << what;
    }
}

TEST(Text_FromUtf8, EveryLengthIsTakenWholeWhereverALetterIsNotAscii) {
    for (std::size_t length = 0; length <= 100; ++length) {
        std::u16string plain(length, u' ');
        for (std::size_t i = 0; i < length; ++i) plain[i] = static_cast<char16_t>(' ' + i % 95);
        const std::string bytes(plain.begin(), plain.end());
        ASSERT_EQ(Text(bytes).Units(), plain);
        for (std::size_t at = 0; at <= length; ++at) {
            const Text mixed(bytes.substr(0, at) + "\xC3\xA9" + bytes.substr(at));
            ASSERT_EQ(mixed.Units(), plain.substr(0, at) + u'\u00E9' + plain.substr(at));
            ASSERT_EQ(mixed.ToUtf8().size(), length + 2);
        }
    }
}

TEST(Text_ToUtf8, ALoneSurrogateBecomesAReplacementAndEveryCodePointComesBack) {
    // Alone before a letter, behind one and before another, and at the end.
    const Text lone(u"\xD801z\xDC00\xDC00z\xD801\xD801\xDC00\0\xD801"s);
    std::ostringstream out;
    out << lone;
    EXPECT_EQ(out.str(),
              "\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD\xF0\x90\x90\x80\0\xEF\xBF\xBD"s);
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        if (IsSurrogate(point)) continue;
        const std::u16string units = UnitsOf(point);
        ASSERT_EQ(Text(Text(units).ToUtf8()).Units(), units) << unsigned(point);
    }
}

TEST(Text_Block, IsSharedByCopiesAndOutlivesItsSource) {
    Text copy;
    {
        Text source(u"a\0"s);
        copy = source;
        EXPECT_TRUE(copy.SharesWith(source));
        EXPECT_TRUE((source + Text()).SharesWith(source));
        EXPECT_TRUE((Text() + source).SharesWith(source));
        const Text taken(std::move(source));
        EXPECT_TRUE(source.Empty());  // NOLINT: the state after a move is promised
        EXPECT_EQ(taken.Length(), 2);
    }
    Text& same = copy;
    copy = same;
    copy = std::move(same);
    EXPECT_FALSE(copy.SharesWith(Text(u"a\0"s)));
    EXPECT_EQ(copy + Text(u"b"), Text(u"a\0b"s));
    EXPECT_EQ(copy += u"b", u"a\0b"s);
    EXPECT_LT(copy, u"a\0\xFFFF"s);
    EXPECT_GT(Text(u"\xFFFF"), u"\xD801\xDC00");  // by units, not by code points
    EXPECT_EQ(std::hash<Text>()(copy), std::hash<Text>()(u8"a\0b"s));
}

}  // namespace
}  // namespace zorvane
