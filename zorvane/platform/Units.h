#pragma once
// Units side by side: what hashing, comparing and copying texts share.
//
// A text of 8 to 40 units is taken in five steps of eight, whatever its length: steps may overlap,
// which neither a hash nor a comparison nor a copy minds. Lengths vary from key to key, and a
// branch on one, guessed wrong, would cost more than the steps that it saves.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "zorvane/platform/Build.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zorvane {

// Compilers make these vectors where the machine has them.
using EightUnits [[gnu::vector_size(16)]] = std::uint16_t;
using FourHalves [[gnu::vector_size(16)]] = std::uint32_t;
using TwoSums [[gnu::vector_size(16)]] = std::uint64_t;
struct TwoWords {
    std::uint64_t First;
    std::uint64_t Second;
};

constexpr std::size_t kSteps = 5;
constexpr std::size_t kFewestInSteps = 8;
constexpr std::size_t kMostInSteps = 8 * kSteps;

[[nodiscard]] inline EightUnits EightAt(const char16_t* units) noexcept {
    EightUnits eight;
    std::memcpy(&eight, units, sizeof eight);
    return eight;
}
// Where a step, from 0, of a text of kFewestInSteps to kMostInSteps units begins.
[[nodiscard]] inline std::size_t StepAt(std::size_t step, std::size_t length) noexcept {
    return std::min(8 * step, length - 8);
}

// The product of the low and the high half of each of two words.
[[nodiscard]] inline TwoWords PlainProductsOfHalves(TwoWords words) noexcept {
    const auto product = [](std::uint64_t word) { return (word & 0xFFFFFFFF) * (word >> 32); };
    return {product(words.First), product(words.Second)};
}
// The same in one step, where the machine has one.
[[nodiscard]] inline TwoSums ProductsOfHalves(TwoSums words) noexcept {
#ifdef __SSE2__
    const auto low = std::bit_cast<__m128i>(words);
    return std::bit_cast<TwoSums>(_mm_mul_epu32(low, _mm_srli_epi64(low, 32)));
#else
    return std::bit_cast<TwoSums>(PlainProductsOfHalves(std::bit_cast<TwoWords>(words)));
#endif
}

// Four units from `from` on, the first in the high bits; what is missing counts as U+0000. So where
// two of these differ, they tell the binary order of what they were taken from.
[[nodiscard]] inline std::uint64_t FourUnits(std::u16string_view text, std::size_t from) noexcept {
    std::uint64_t four = 0;
    if (std::endian::native == std::endian::little && text.size() >= from + 4) {
        std::memcpy(&four, text.data() + from, sizeof four);
        four = (four << 32) | (four >> 32);
        return ((four & 0x0000FFFF0000FFFFu) << 16) | ((four >> 16) & 0x0000FFFF0000FFFFu);
    }
    for (std::size_t i = from; i < from + 4; ++i) {
        four = (four << 16) | (i < text.size() ? text[i] : 0u);
    }
    return four;
}

// Eight units, the first in the high bits; what is missing counts as U+0000.
struct EightInBytes {
    std::uint64_t Low;   // bytes of the units
    std::uint64_t High;  // bytes; 0: all units fit a byte

    // In the order of the units among those that fit a byte, and behind each of them where the
    // first unit that differs does not.
    [[nodiscard]] std::uint64_t Saturated() const noexcept {
        if (High == 0) [[likely]]
            return Low;
        return Low | (~std::uint64_t{0} >> (static_cast<unsigned>(std::countl_zero(High)) & ~7u));
    }
};

[[nodiscard]] inline EightInBytes EightUnitsInBytes(std::u16string_view text,
                                                    std::size_t from) noexcept {
    EightInBytes eight{0, 0};
    if (from >= text.size()) return eight;
    if (std::endian::native == std::endian::little && text.size() >= 8) {
        using EightOfBytes [[gnu::vector_size(8)]] = std::uint8_t;
        const auto bytes = [](EightUnits units) {
            return __builtin_bswap64(
                std::bit_cast<std::uint64_t>(__builtin_convertvector(units, EightOfBytes)));
        };
        // A text's end is read with what stands in front of it, which is shifted out.
        const std::size_t at = std::min(from, text.size() - 8);
        const EightUnits units = EightAt(text.data() + at);
        return {bytes(units & 0xFF) << (8 * (from - at)), bytes(units >> 8) << (8 * (from - at))};
    }
    for (std::size_t i = from; i < from + 8; ++i) {
        const std::uint64_t unit = i < text.size() ? text[i] : 0u;
        eight = {(eight.Low << 8) | (unit & 0xFF), (eight.High << 8) | (unit >> 8)};
    }
    return eight;
}

[[nodiscard]] inline bool SameUnits(std::u16string_view left, std::u16string_view right) noexcept {
    const std::size_t length = left.size();
    if (length != right.size()) return false;
    if (length < kFewestInSteps || length > kMostInSteps) {
        // The standard view compares such units one by one.
        return length == 0 ||
               std::memcmp(left.data(), right.data(), length * sizeof(char16_t)) == 0;
    }
    EightUnits differ{};
    for (std::size_t step = 0; step < kSteps; ++step) {
        const std::size_t at = StepAt(step, length);
        differ |= EightAt(left.data() + at) ^ EightAt(right.data() + at);
    }
    const auto words = std::bit_cast<TwoWords>(differ);
    return (words.First | words.Second) == 0;
}

// Copies units, or words that stand for them, to where they do not overlap.
inline void CopyUnits(void* to, const void* from, std::size_t count) noexcept {
    constexpr std::size_t kUnit = sizeof(char16_t);
    const auto copy = [&]<std::size_t kUnits>(std::size_t at) {
        std::memcpy(static_cast<std::byte*>(to) + at * kUnit,
                    static_cast<const std::byte*>(from) + at * kUnit, kUnits * kUnit);
    };
    if (count > kMostInSteps) {
        std::memcpy(to, from, count * kUnit);
    } else if (count >= kFewestInSteps) {
        for (std::size_t step = 0; step < kSteps; ++step) copy.operator()<8>(StepAt(step, count));
    } else if (count >= 4) {
        copy.operator()<4>(0);
        copy.operator()<4>(count - 4);
    } else {
        for (std::size_t at = 0; at < count; ++at) copy.operator()<1>(at);
    }
}

}  // namespace zorvane
