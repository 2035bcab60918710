#pragma once
// Units side by side: what hashing and comparing texts share.
//
// A text of 8 to 32 units is taken in four steps of eight, whatever its length: steps may overlap,
// which neither a hash nor a comparison minds. Lengths vary from key to key, and a branch on one,
// guessed wrong, would cost more than the steps that it saves.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zorvane {

// Compilers make it a vector where the machine has one.
using EightUnits [[gnu::vector_size(16)]] = std::uint16_t;
struct TwoWords {
    std::uint64_t First;
    std::uint64_t Second;
};

constexpr std::size_t kFewestInSteps = 8;
constexpr std::size_t kMostInFourSteps = 32;

[[nodiscard]] inline EightUnits EightAt(const char16_t* units) noexcept {
    EightUnits eight;
    std::memcpy(&eight, units, sizeof eight);
    return eight;
}
// Where step 0..3 of a text of kFewestInSteps to kMostInFourSteps units begins.
[[nodiscard]] inline std::size_t StepAt(std::size_t step, std::size_t length) noexcept {
    return std::min(8 * step, length - 8);
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

[[nodiscard]] inline bool SameUnits(std::u16string_view left, std::u16string_view right) noexcept {
    const std::size_t length = left.size();
    if (length != right.size()) return false;
    if (length < kFewestInSteps || length > kMostInFourSteps) {
        // The standard view compares such units one by one.
        return length == 0 ||
               std::memcmp(left.data(), right.data(), length * sizeof(char16_t)) == 0;
    }
    EightUnits differ{};
    for (std::size_t step = 0; step < 4; ++step) {
        const std::size_t at = StepAt(step, length);
        differ |= EightAt(left.data() + at) ^ EightAt(right.data() + at);
    }
    const auto words = std::bit_cast<TwoWords>(differ);
    return (words.First | words.Second) == 0;
}

}  // namespace zorvane
