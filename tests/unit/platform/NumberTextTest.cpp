#include "platform/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/Variant.h"

namespace zorvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(FormatNumber, RoundsHalfAwayFromZeroAndNeverShowsMinusZero) {
    const struct {
        const char* what;
        double value;
        const char16_t* pattern;
        const char* text;
    } rows[] = {
        {"a quarter", 0.25, u"###0.0000", "0.2500"},
        {"zero", 0, u"###0.0000", "0.0000"},
        {"half away from zero", 0.00005, u"###0.0000", "0.0001"},
        {"half away from zero, below", -0.00005, u"###0.0000", "-0.0001"},
        {"an even last digit goes up too", 0.00025, u"###0.0000", "0.0003"},
        {"less than half", 0.000049999, u"###0.0000", "0.0000"},
        {"negative that rounds to zero", -0.00001, u"###0.0000", "0.0000"},
        {"negative zero", -0.0, u"###0.0000", "0.0000"},
        {"carries through nines", 9.99995, u"###0.0000", "10.0000"},
        {"carries from nothing", 0.99996, u"###0.0000", "1.0000"},
        {"more digits than '#'", 123456.5, u"###0.0000", "123456.5000"},
        {"what a single cannot hold exactly", static_cast<double>(0.1f), u"###0.0000", "0.1000"},
        {"sub-total of zero keeps its point", 0, u"###0.#####", "0."},
        {"sub-total drops zeros behind", 0.25, u"###0.#####", "0.25"},
        {"sub-total of a whole number", 3, u"###0.#####", "3."},
        {"sub-total of five places", 0.123456, u"###0.#####", "0.12346"},
        {"negative sub-total that vanishes", -0.000001, u"###0.#####", "0."},
        {"very small", 1e-300, u"###0.0000", "0.0000"},
        {"very large", 1e20, u"###0.0000", "100000000000000000000.0000"},
        {"no point in the pattern", 2.5, u"0", "3"},
        {"no point, rounds up from nothing", 0.5, u"#", "1"},
        {"no point, nothing left", 0.4, u"#", ""},
        {"leading zeros", 7, u"000.0#", "007.0"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FormatNumber(row.value, row.pattern).ToUtf8(), row.text) << row.what;
    }
}

TEST(LeadingNumber, ReadsTheNumberThatTheTextBeginsWith) {
    const struct {
        const char* what;
        const char16_t* text;
        double value;
    } rows[] = {
        {"plain", u"2000", 2000},
        {"half", u"2000.5", 2000.5},
        {"blanks before", u" \t 42", 42},
        {"letters behind", u"12abc", 12},
        {"nothing", u"", 0},
        {"letters", u"abc", 0},
        {"sign", u"-5", -5},
        {"plus", u"+5", 5},
        {"two signs", u"+-5", 0},
        {"point first", u".5", 0.5},
        {"point last", u"5.", 5},
        {"point alone", u".", 0},
        {"exponent", u"1e3", 1000},
        {"half an exponent", u"1e", 1},
        {"comma ends it", u"1,5", 1},
        {"hexadecimal ends it", u"0x10", 0},
        {"infinity is a word", u"inf", 0},
        {"not-a-number is a word", u"nan", 0},
        {"too large", u"1e999", kInfinity},
        {"too large, with a point", u"1.5e999", kInfinity},
        {"too large, written out of small parts", u"-0.001e9999", -kInfinity},
        {"too small", u"1.5e-999", 0},
        {"zero with a large exponent", u"0e999", 0},
        {"exponent beyond any integer", u"1e99999999999999999999", kInfinity},
        {"digits of another script", u"\u0661", 0},
    };
    for (const char* locale : {"C", "de_DE.UTF-8"}) {
        // Where the machine has no such locale, the second round repeats the first.
        std::setlocale(LC_NUMERIC, locale);
        for (const auto& row : rows) {
            EXPECT_EQ(LeadingNumber(row.text), row.value) << row.what << ", locale " << locale;
        }
    }
    std::setlocale(LC_NUMERIC, "C");
}

TEST(ParseNumber, TakesTheWholeTextOrNothing) {
    EXPECT_EQ(ParseNumber(u"  -2.5e1 "), -25.0);
    for (const char16_t* text : {u"", u" ", u"1 2", u"12a", u"+", u"-", u"1e", u"&H10", u"1,5"}) {
        EXPECT_FALSE(ParseNumber(text)) << Text(text);
    }
}

TEST(RoundHalfEven, RoundsHalvesToTheEvenNeighbourAndKeepsTheLimits) {
    const struct {
        double value;
        std::int64_t rounded;
    } rows[] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {2.4999, 2}, {2.5001, 3}};
    for (const auto& row : rows) EXPECT_EQ(RoundHalfEven(row.value, -10, 10), row.rounded);

    EXPECT_EQ(RoundHalfEven(10.5, -10, 10), 10);  // inside after rounding
    EXPECT_FALSE(RoundHalfEven(10.6, -10, 10));
    EXPECT_FALSE(RoundHalfEven(kNan, -10, 10));
    EXPECT_FALSE(RoundHalfEven(9223372036854775808.0, INT64_MIN, INT64_MAX));
    EXPECT_EQ(RoundHalfEven(-9223372036854775808.0, INT64_MIN, INT64_MAX), INT64_MIN);

    EXPECT_EQ(RoundHalfEvenSaturating(kInfinity, -10, 10), 10);
    EXPECT_EQ(RoundHalfEvenSaturating(-1e300, -10, 10), -10);
    EXPECT_EQ(RoundHalfEvenSaturating(kNan, -10, 10), 0);
    EXPECT_EQ(RoundHalfEvenSaturating(kNan, 3, 10), 3);
}

TEST(DoubleText, ShowsUpToFifteenDigitsWithoutLocale) {
    const struct {
        double value;
        int digits;
        const char* text;
    } rows[] = {
        {0, 15, "0"},
        {-0.0, 15, "0"},
        {0.1, 15, "0.1"},
        {1.0 / 3, 15, "0.333333333333333"},
        {100000, 15, "100000"},
        {123456789012345.0, 15, "123456789012345"},
        {1e15, 15, "1E+15"},
        {-2.5e-7, 15, "-2.5E-07"},
        {static_cast<double>(0.1f), 7, "0.1"},
        {static_cast<double>(16777216.0f), 7, "1.677722E+07"},
    };
    for (const auto& row : rows) EXPECT_EQ(DoubleText(row.value, row.digits).ToUtf8(), row.text);
}

TEST(CurrencyText, ShowsUpToFourDecimals) {
    const struct {
        std::int64_t value;
        const char* text;
    } rows[] = {{0, "0"},
                {10000, "1"},
                {-5, "-0.0005"},
                {12345600, "1234.56"},
                {INT64_MAX, "922337203685477.5807"},
                {INT64_MIN, "-922337203685477.5808"}};
    for (const auto& row : rows) EXPECT_EQ(CurrencyText(row.value).ToUtf8(), row.text);
}

TEST(DecimalText, ShowsAll96BitsAndDropsZerosBehindThePoint) {
    const struct {
        const char* what;
        Decimal value;
        const char* text;
    } rows[] = {
        {"zero", {0, 0, 0, false}, "0"},
        {"negative zero", {0, 0, 3, true}, "0"},
        {"greatest", {~0ull, ~0u, 0, false}, "79228162514264337593543950335"},
        {"least step", {1, 0, 28, true}, "-0.0000000000000000000000000001"},
        {"zeros behind", {1500, 0, 3, false}, "1.5"},
        {"zeros before", {1500, 0, 2, false}, "15"},
        {"carries over 64 bits", {0, 1, 0, false}, "18446744073709551616"},
    };
    for (const auto& row : rows) EXPECT_EQ(DecimalText(row.value).ToUtf8(), row.text) << row.what;
}

TEST(DateText, NamesTheDayAndTheTimeWhereItIsNotMidnight) {
    const struct {
        const char* what;
        double days;
        const char* text;
    } rows[] = {
        {"day zero", 0, "1899-12-30"},
        {"day one", 1, "1899-12-31"},
        {"a leap day", 36585, "2000-02-29"},
        {"a century without a leap day", 61, "1900-03-01"},
        {"with a time", 46082.5, "2026-03-01 12:00:00"},
        {"seconds", 46082.0 + 49510.0 / 86400, "2026-03-01 13:45:10"},
        {"time alone", 0.25, "1899-12-30 06:00:00"},
        {"negative days count their time upwards", -1.25, "1899-12-29 06:00:00"},
        {"negative within day zero", -0.25, "1899-12-30 06:00:00"},
        {"rounds up to the next midnight", 46081.999999, "2026-03-01"},
        {"first day", -657434, "0100-01-01"},
        {"last day", 2958465, "9999-12-31"},
        {"last second", 2958465.99998, "9999-12-31 23:59:58"},
        {"a midnight that no year has", 2958465.9999999, "2958465.9999999"},
        {"before the first day", -657435, "-657435"},
        {"after the last day", 2958466, "2958466"},
    };
    for (const auto& row : rows) EXPECT_EQ(DateText(row.days).ToUtf8(), row.text) << row.what;
    EXPECT_EQ(DateText(kNan), DoubleText(kNan));
}

}  // namespace
}  // namespace zorvane
