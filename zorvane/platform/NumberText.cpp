#include "zorvane/platform/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "zorvane/platform/Variant.h"
#include "zorvane/platform/detail/ReadDouble.h"

namespace zorvane {
namespace {

constexpr int kMostDigits = 300;

template <class... Format>
std::string ToChars(Format... format) {
    std::array<char, kMostDigits + 100> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), format...);
    return {buffer.data(), end};
}

std::string Padded(std::int64_t value, std::size_t width) {
    std::string digits = std::to_string(value);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

// `digits` with a point `scale` places from the right, zeros behind the point dropped.
std::string WithPoint(std::string digits, std::size_t scale, bool negative) {
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    std::string whole = digits.substr(0, digits.size() - scale);
    std::string part = digits.substr(digits.size() - scale);
    part.erase(part.find_last_not_of('0') + 1);
    const bool zero = part.empty() && whole.find_first_not_of('0') == std::string::npos;
    return (negative && !zero ? "-" : "") + whole + (part.empty() ? "" : "." + part);
}

// Adds one to the last of the decimal digits; true when a new first digit "1" is needed.
bool Increment(std::string& digits) {
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return false;
        }
        digits[i] = '0';
    }
    return true;
}

struct Rounded {
    std::string whole;
    std::string part;  // exactly as many places as were asked for
};

// The decimal digits of a finite value >= 0, from its 15 significant digits, half away from zero.
Rounded RoundDecimal(double value, std::size_t places) {
    const std::string text = ToChars(value, std::chars_format::scientific, 14);
    const std::size_t e = text.find('e');
    std::string digits = text.substr(0, 1) + text.substr(2, e - 2);
    long point = 1 + std::strtol(text.c_str() + e + 1, nullptr, 10);  // digits before the point
    if (point < 0) {
        digits.insert(0, static_cast<std::size_t>(-point), '0');
        point = 0;
    }
    const std::size_t keep = static_cast<std::size_t>(point) + places;
    const bool up = keep < digits.size() && digits[keep] >= '5';
    digits.resize(keep, '0');
    if (up && Increment(digits)) {
        digits.insert(0, 1, '1');
        ++point;
    }
    const auto split = static_cast<std::size_t>(point);
    std::string whole = digits.substr(0, split);
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    return {whole, digits.substr(split)};
}

constexpr bool IsBlank(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

// The text as plain characters for the C number reader; what is not ASCII ends a number anyway.
std::string Narrow(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    if (!text.empty() && text.front() == u'+') {
        text.remove_prefix(1);
        if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) return {};
    }
    std::string narrow(text.size(), '?');
    std::ranges::transform(text, narrow.begin(), [](char16_t unit) {
        return unit < 0x80 ? static_cast<char>(unit) : '?';
    });
    return narrow;
}

// What a number that does not fit stands for: no bound or nothing at all. Its power of ten tells.
double BeyondRange(std::string_view number) {
    const double sign = number.front() == '-' ? -1 : 1;
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    const std::string_view digits = number.substr(0, e);
    const std::size_t first = digits.find_first_of("123456789");
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::int64_t power = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    std::int64_t exponent = 0;
    std::string_view written = number.substr(std::min(e + 1, number.size()));
    const bool down = written.starts_with('-');
    for (const char digit : written) {
        if (digit < '0' || digit > '9') continue;
        exponent = std::min<std::int64_t>(exponent * 10 + (digit - '0'), 1'000'000'000'000);
    }
    power += down ? -exponent : exponent;
    return sign * (power > 0 ? std::numeric_limits<double>::infinity() : 0.0);
}

struct Parsed {
    double value = 0;
    std::size_t used = 0;
};

Parsed Parse(const std::string& narrow) {
    // Words such as "inf" or "nan" are not numbers here.
    const std::size_t first = !narrow.empty() && narrow[0] == '-' ? 1 : 0;
    if (first < narrow.size() && narrow[first] != '.' &&
        (narrow[first] < '0' || narrow[first] > '9')) {
        return {};
    }
    Parsed parsed;
    const char* begin = narrow.data();
    const auto [end, error] = ReadDouble(begin, begin + narrow.size(), parsed.value);
    if (error == std::errc::invalid_argument) return {};
    parsed.used = static_cast<std::size_t>(end - begin);
    if (error == std::errc::result_out_of_range) {
        parsed.value = BeyondRange({begin, parsed.used});
    }
    return parsed;
}

}  // namespace

Text CurrencyText(std::int64_t tenThousandths) {
    std::string digits = std::to_string(tenThousandths);
    const bool negative = tenThousandths < 0;
    return WithPoint(digits.substr(negative ? 1 : 0), 4, negative);
}

Text DateText(double days) {
    constexpr double kFirst = -657434;     // the first day of the year 100
    constexpr double kPastLast = 2958466;  // the first day of the year 10000
    if (!(days > kFirst - 1 && days < kPastLast)) return DoubleText(days);
    // A negative date counts its days downwards and its time of day upwards.
    const double whole = std::trunc(days);
    std::int64_t seconds = std::llround(std::fabs(days - whole) * 86400);
    std::int64_t day = static_cast<std::int64_t>(whole);
    if (seconds == 86400) {
        seconds = 0;
        if (++day == static_cast<std::int64_t>(kPastLast)) return DoubleText(days);
    }
    constexpr std::chrono::sys_days kDayZero{std::chrono::December / 30 / 1899};
    const std::chrono::year_month_day date(kDayZero + std::chrono::days(day));
    std::string text = Padded(static_cast<int>(date.year()), 4) + "-" +
                       Padded(static_cast<unsigned>(date.month()), 2) + "-" +
                       Padded(static_cast<unsigned>(date.day()), 2);
    if (seconds != 0) {
        text += " " + Padded(seconds / 3600, 2) + ":" + Padded(seconds / 60 % 60, 2) + ":" +
                Padded(seconds % 60, 2);
    }
    return text;
}

Text DecimalText(const Decimal& value) {
    // Long division of the 96-bit number by ten, 32 bits at a time.
    std::array<std::uint32_t, 3> parts{value.High, static_cast<std::uint32_t>(value.Low >> 32),
                                       static_cast<std::uint32_t>(value.Low)};
    std::string digits;
    do {
        std::uint64_t remainder = 0;
        for (std::uint32_t& part : parts) {
            const std::uint64_t dividend = (remainder << 32) | part;
            part = static_cast<std::uint32_t>(dividend / 10);
            remainder = dividend % 10;
        }
        digits.push_back(static_cast<char>('0' + remainder));
    } while (parts != std::array<std::uint32_t, 3>{});
    std::ranges::reverse(digits);
    return WithPoint(digits, value.Scale, value.Negative);
}

Text DoubleText(double value, int digits) {
    if (value == 0) return "0";
    std::string text = ToChars(value, std::chars_format::general, std::min(digits, kMostDigits));
    std::ranges::replace(text, 'e', 'E');
    return text;
}

Text LongText(std::int64_t value) {
    return std::to_string(value);
}

Text FormatNumber(double value, std::u16string_view pattern) {
    if (!std::isfinite(value)) return DoubleText(value);
    const std::size_t dot = std::min(pattern.find(u'.'), pattern.size());
    const std::u16string_view places = pattern.substr(std::min(dot + 1, pattern.size()));
    const auto zerosIn = [](std::u16string_view part) {
        return static_cast<std::size_t>(std::ranges::count(part, u'0'));
    };
    Rounded digits = RoundDecimal(std::fabs(value), places.size());
    const std::size_t atLeast = zerosIn(pattern.substr(0, dot));
    if (digits.whole.size() < atLeast) digits.whole.insert(0, atLeast - digits.whole.size(), '0');
    while (digits.part.size() > zerosIn(places) && digits.part.back() == '0')
        digits.part.pop_back();
    const bool zero = (digits.whole + digits.part).find_first_not_of('0') == std::string::npos;
    return (value < 0 && !zero ? "-" : "") + digits.whole +
           (dot < pattern.size() ? "." + digits.part : "");
}

std::optional<double> ParseNumber(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    const std::string narrow = Narrow(text);
    const Parsed parsed = Parse(narrow);
    if (parsed.used == 0 || parsed.used != narrow.size()) return std::nullopt;
    return parsed.value;
}

double LeadingNumber(std::u16string_view text) {
    return Parse(Narrow(text)).value;
}

std::optional<std::int64_t> RoundHalfEven(double value, std::int64_t least, std::int64_t greatest) {
    // std::nearbyint follows the rounding mode, which nothing here changes: half to even.
    const double rounded = std::nearbyint(value);
    if (!(rounded >= static_cast<double>(least) && rounded <= static_cast<double>(greatest))) {
        return std::nullopt;
    }
    if (rounded >= 9223372036854775808.0) return std::nullopt;  // the limit itself was rounded up
    return static_cast<std::int64_t>(rounded);
}

std::int64_t RoundHalfEvenSaturating(double value, std::int64_t least, std::int64_t greatest) {
    if (const auto rounded = RoundHalfEven(value, least, greatest)) return *rounded;
    if (std::isnan(value)) return std::clamp<std::int64_t>(0, least, greatest);
    return value < 0 ? least : greatest;
}

}  // namespace zorvane
