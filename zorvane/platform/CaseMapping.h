#pragma once
/// \file
/// One fixed rule for case on every machine: simple folding and simple lower-casing per code point,
/// from a checked-in table of Unicode data. No locale, no change of length; lone surrogates stay.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

/// How two texts are compared: by units, or by units after case folding.
enum class CompareMode : std::int32_t { Binary = 0, Text = 1 };

[[nodiscard]] ZORVANE_EXPORT char32_t FoldCodePoint(char32_t point) noexcept;
[[nodiscard]] ZORVANE_EXPORT char32_t LowerCodePoint(char32_t point) noexcept;
/// The text itself where nothing changes, else a new text of the same length. O(n).
[[nodiscard]] ZORVANE_EXPORT Text LowerCase(const Text& text);

/// -1, 0 or 1: the first differing unit decides (unsigned), then the shorter text comes first.
/// O(n).
[[nodiscard]] ZORVANE_EXPORT int CompareTexts(std::u16string_view left, std::u16string_view right,
                                              CompareMode mode) noexcept;
[[nodiscard]] ZORVANE_EXPORT bool EqualTexts(std::u16string_view left, std::u16string_view right,
                                             CompareMode mode) noexcept;
/// True when the two have the same LowerCase, without making it.
[[nodiscard]] ZORVANE_EXPORT bool EqualLowerCase(std::u16string_view left,
                                                 std::u16string_view right) noexcept;

/// Hashes differ from process to process, so that nobody can choose texts that share one; none is
/// 0.
///
/// Equal for texts that are equal folded or equal in lower case, and for few others. See
/// Text::FoldedHash.
[[nodiscard]] ZORVANE_EXPORT std::uint32_t HashFolded(std::u16string_view units) noexcept;
/// When two texts count as one.
enum class Sameness { Units, Folded, LowerCase };
/// Equal for texts that are the same in this sense and come with the same number beside them, and
/// as far as 32 bits tell for no others, whoever chooses them. Slower than HashFolded.
[[nodiscard]] ZORVANE_EXPORT std::uint32_t HashExactly(std::u16string_view units, Sameness sameness,
                                                       std::uint32_t beside = 0) noexcept;
/// Equal for the same bytes, and as far as 32 bits tell for no others. O(n).
[[nodiscard]] ZORVANE_EXPORT std::uint32_t HashBytes(std::string_view bytes) noexcept;

[[nodiscard]] constexpr bool IsSurrogate(char32_t point) noexcept {
    return point >= 0xD800 && point <= 0xDFFF;
}
/// The code point that starts at `at`; moves `at` past it. A lone surrogate stands for itself.
[[nodiscard]] constexpr char32_t CodePointAt(std::u16string_view units, std::size_t& at) noexcept {
    const char32_t first = units[at++];
    if (first < 0xD800 || first > 0xDBFF || at == units.size()) return first;
    const char32_t second = units[at];
    if (second < 0xDC00 || second > 0xDFFF) return first;
    ++at;
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

}  // namespace zorvane
