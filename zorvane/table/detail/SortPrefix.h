#pragma once
// SortPrefix: 64 bits of a value that never contradict its order, so that most comparisons are of
// integers that lie side by side.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>

#include "zorvane/platform/Units.h"
#include "zorvane/table/detail/Plain.h"

namespace zorvane::detail {

template <class T>
inline constexpr bool kIsText =
    std::is_same_v<PlainOf<T>, std::string_view> || std::is_same_v<PlainOf<T>, std::u16string_view>;

// A value without a prefix is compared in full.
template <class T>
inline constexpr bool kHasPrefix = kIsText<T> || (std::is_integral_v<T> && sizeof(T) <= 8) ||
                                   std::is_same_v<T, double> || std::is_same_v<T, float>;

// Eight bytes from `from` on, the first in the high bits; what is missing counts as 0.
[[nodiscard]] inline std::uint64_t EightBytes(std::string_view text, std::size_t from) noexcept {
    std::uint64_t eight = 0;
    if (std::endian::native == std::endian::little && text.size() >= from + sizeof eight) {
        std::memcpy(&eight, text.data() + from, sizeof eight);
        return __builtin_bswap64(eight);
    }
    for (std::size_t i = from; i < from + sizeof eight; ++i) {
        eight = (eight << 8) | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
    }
    return eight;
}

// `lead`: units of a text that are passed over, as all have the same.
template <class T>
[[nodiscard]] std::uint64_t SortPrefix(const T& value, std::size_t lead) noexcept {
    constexpr std::uint64_t kTop = std::uint64_t{1} << 63;
    if constexpr (kIsText<T>) {
        const auto text = Plain(value);
        if (lead >= text.size()) return 0;
        if constexpr (std::is_same_v<PlainOf<T>, std::string_view>) {
            return EightBytes(text, lead);
        } else {
            return FourUnits(text, lead);
        }
    } else if constexpr (std::is_floating_point_v<T>) {
        if (value != value) return UINT64_MAX;
        // Both zeros are one number.
        const auto bits = std::bit_cast<std::uint64_t>(static_cast<double>(value) + 0.0);
        return (bits & kTop) != 0 ? ~bits : bits | kTop;
    } else {
        const auto bits = static_cast<std::uint64_t>(value);
        return std::is_signed_v<T> ? bits ^ kTop : bits;
    }
}

// How many units two texts have in common at their beginnings.
template <class T>
[[nodiscard]] std::size_t SharedLead(const T& left, const T& right) noexcept {
    const auto a = Plain(left);
    const auto b = Plain(right);
    const auto differ = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    return static_cast<std::size_t>(differ.first - a.begin());
}

}  // namespace zorvane::detail
