#include "zorvane/platform/NumberText.h"

#include <clocale>

#include "tests/support/Testing.h"
#include "zorvane/platform/detail/ReadDouble.h"

namespace zorvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(FormatNumber, RoundsHalfAwayFromZeroAndNeverShowsMinusZero) {
    const std::tuple<const char*, double, const char16_t*, const char*> rows[] = {
        {"half away from zero, below", -0.00005, u"###0.0000", "-0.0001"},
        {"an even last digit goes up too", 0.00025, u"###0.0000", "0.0003"},
        {"less than half", 0.000049999, u"###0.0000", "0.0000"},
        {"negative that rounds to zero", -0.00001, u"###0.0000", "0.0000"},
        {"carries through nines", 9.99995, u"###0.0000", "10.0000"},
        {"very small", 1e-300, u"###0.0000", "0.0000"},
        {"very large", 1e20, u"###0.0000", "100000000000000000000.0000"},
        {"sub-total of zero keeps its point", 0, u"###0.#####", "0."},
        {"sub-total drops zeros behind", 0.25, u"###0.#####", "0.25"},
        {"sub-total of five places", 0.123456, u"###0.#####", "0.12346"},
        {"no point in the pattern", 2.5, u"0", "3"},
        {"no point, nothing left", 0.4, u"#", ""},
        {"leading zeros", 7, u"000.0#", "007.0"},
    };
    for (const auto& [what, value, pattern, text] : rows) {
        EXPECT_EQ(FormatNumber(value, pattern).ToUtf8(), text) << what;
    }
}

TEST(LeadingNumber, ReadsTheNumberThatTheTextBeginsWith) {
    const struct {
        const char* what;
        std::u16string text;
        double value;
        bool whole = false;  // the whole text is one number
    } rows[] = {
        {"blanks behind", u"-5e1 ", -50, true},
        {"blanks and ends of lines around", u" \t\r\n42\v\f\n", 42, true},
        {"a blank", u" ", 0},
        {"plus", u"+5", 5, true},
        {"a sign alone", u"+", 0},
        {"two signs", u"+-5", 0},
        {"point first", u".5", 0.5, true},
        {"point last", u"5.", 5, true},
        {"point alone", u".", 0},
        {"half an exponent", u"1e", 1},
        {"comma ends it", u"1,5", 1},
        {"hexadecimal ends it", u"0x10", 0},
        {"not-a-number is a word", u"-nan", 0},
        {"too large, with a point", u"1.5e999", kInfinity, true},
        {"too large, written out of small parts", u"-0.001e9999", -kInfinity, true},
        {"too small", u"1.5e-999", 0, true},
        {"too large by its digits alone", u"1" + std::u16string(1380, u'0') + u"e-1050", kInfinity,
         true},
        {"zero with a large exponent", u"0e999", 0, true},
        {"exponent beyond any integer", u"1e99999999999999999999", kInfinity, true},
        {"digits of another script", u"\u0661", 0},
    };
    for (const char* locale : {"C", "de_DE.UTF-8"}) {
        // Where the machine has no such locale, the second round repeats the first.
        std::setlocale(LC_NUMERIC, locale);
        for (const auto& row : rows) {
            EXPECT_EQ(LeadingNumber(row.text), row.value) << row.what << ", locale " << locale;
            EXPECT_EQ(ParseNumber(row.text), row.whole ? std::optional(row.value) : std::nullopt)
                << row.what << ", locale " << locale;
        }
    }
    std::setlocale(LC_NUMERIC, "C");
}

// Catches a number that another standard library reads otherwise, in value, length or range.
TEST(ReadDouble, AStreamReadsWhatTheStandardReaderReads) {
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        while (random() % 12 != 0) text += "0012345678999..e-+ "[random() % 19];
        if (round % 2 != 0) text += "e-" + std::to_string(290 + random() % 40);
        double ours = 0.5;
        double theirs = 0.5;
        const auto [end, error] = ReadDoubleByStream(text.data(), text.data() + text.size(), ours);
        const auto wanted = ReadDouble(text.data(), text.data() + text.size(), theirs);
        ASSERT_EQ(std::tie(end, error, ours), std::tie(wanted.ptr, wanted.ec, theirs)) << text;
    }
}

TEST(RoundHalfEven, RoundsHalvesToTheEvenNeighbourAndKeepsTheLimits) {
    const std::tuple<double, std::optional<std::int64_t>, std::int64_t> rows[] = {
        {0.5, 0, 0},    {1.5, 2, 2},    {2.5, 2, 2},       {-1.5, -2, -2},      {2.5001, 3, 3},
        {10.5, 10, 10}, {10.6, {}, 10}, {-1e300, {}, -10}, {kInfinity, {}, 10}, {kNan, {}, 0},
    };
    for (const auto& [value, rounded, saturated] : rows) {
        EXPECT_EQ(RoundHalfEven(value, -10, 10), rounded) << value;
        EXPECT_EQ(RoundHalfEvenSaturating(value, -10, 10), saturated) << value;
    }
    EXPECT_FALSE(RoundHalfEven(9223372036854775808.0, INT64_MIN, INT64_MAX));
    EXPECT_EQ(RoundHalfEven(-9223372036854775808.0, INT64_MIN, INT64_MAX), INT64_MIN);
    EXPECT_EQ(RoundHalfEvenSaturating(kNan, 3, 10), 3);
}

TEST(NumberTexts, EachTypeHasOneForm) {
    const std::tuple<const char*, Text, const char*> rows[] = {
        {"zero", DoubleText(-0.0), "0"},
        {"fifteen digits", DoubleText(1.0 / 3), "0.333333333333333"},
        {"the last without an exponent", DoubleText(123456789012345.0), "123456789012345"},
        {"the first with one", DoubleText(1e15), "1E+15"},
        {"seven digits", DoubleText(static_cast<double>(16777216.0f), 7), "1.677722E+07"},
        {"its least step", CurrencyText(-5), "-0.0005"},
        {"greatest currency", CurrencyText(INT64_MAX), "922337203685477.5807"},
        {"least currency", CurrencyText(INT64_MIN), "-922337203685477.5808"},
        {"negative zero", DecimalText({0, 0, 3, true}), "0"},
        {"greatest", DecimalText({~0ull, ~0u, 0, false}), "79228162514264337593543950335"},
        {"least step", DecimalText({1, 0, 28, true}), "-0.0000000000000000000000000001"},
        {"carries over 64 bits", DecimalText({0, 1, 0, false}), "18446744073709551616"},
        {"a leap day", DateText(36585), "2000-02-29"},
        {"a century without a leap day", DateText(61), "1900-03-01"},
        {"seconds", DateText(46082.0 + 49510.0 / 86400), "2026-03-01 13:45:10"},
        {"negative days count their time upwards", DateText(-1.25), "1899-12-29 06:00:00"},
        {"rounds up to the next midnight", DateText(46081.999999), "2026-03-01"},
        {"first day", DateText(-657434), "0100-01-01"},
        {"last second", DateText(2958465.99998), "9999-12-31 23:59:58"},
        {"a midnight that no year has", DateText(2958465.9999999), "2958465.9999999"},
        {"before the first day", DateText(-657435), "-657435"},
        {"after the last day", DateText(2958466), "2958466"},
        {"no day", DateText(kNan), "nan"},
    };
    for (const auto& [what, text, shown] : rows) EXPECT_EQ(text.ToUtf8(), shown) << what;
}

}  // namespace
}  // namespace zorvane
