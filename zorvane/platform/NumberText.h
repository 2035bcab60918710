#pragma once
/// \file
/// Numbers, currency, decimals and dates as text, and numbers out of text. Never by the locale.

#include <cstdint>
#include <optional>
#include <string_view>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

struct Decimal;

[[nodiscard]] ZORVANE_EXPORT Text
CurrencyText(std::int64_t tenThousandths);  ///< up to four decimals
/// "2026-03-01", with " 13:45:10" where the time is not midnight. A number that names no day of the
/// years 100 to 9999 is shown as a number.
[[nodiscard]] ZORVANE_EXPORT Text DateText(double daysSince1899);
[[nodiscard]] ZORVANE_EXPORT Text DecimalText(const Decimal& value);
/// At most `digits` significant digits (0 counts as 1, a negative number as 6, more than 300 as
/// 300); an exponent ("1E+20") only where plain digits would not do.
[[nodiscard]] ZORVANE_EXPORT Text DoubleText(double value, int digits = 15);
[[nodiscard]] ZORVANE_EXPORT Text LongText(std::int64_t value);

/// A number by a pattern of '#' (digit when needed), '0' (digit always) and one '.', such as
/// "###0.0000" or "###0.#####". Rounds half away from zero at the last place of the pattern, works
/// on 15 significant digits, keeps a trailing '.' and never shows "-0".
[[nodiscard]] ZORVANE_EXPORT Text FormatNumber(double value, std::u16string_view pattern);

/// The whole text as a number in C form, blanks around it allowed; nothing when it is none. What a
/// double cannot hold is infinite ("1e400") or 0 ("1e-400"), here and in LeadingNumber.
[[nodiscard]] ZORVANE_EXPORT std::optional<double> ParseNumber(std::u16string_view text);
/// The number that the text begins with (blanks before it allowed), 0 when there is none.
[[nodiscard]] ZORVANE_EXPORT double LeadingNumber(std::u16string_view text);

/// Half to even, as every conversion to an integer does. Not-a-number gives nothing, and so does a
/// value outside least..greatest after rounding.
[[nodiscard]] ZORVANE_EXPORT std::optional<std::int64_t> RoundHalfEven(double value,
                                                                       std::int64_t least,
                                                                       std::int64_t greatest);
/// The same, but what lies outside gives the nearer limit, and not-a-number gives 0 (or the limit
/// nearest to it).
[[nodiscard]] ZORVANE_EXPORT std::int64_t RoundHalfEvenSaturating(double value, std::int64_t least,
                                                                  std::int64_t greatest);

}  // namespace zorvane
