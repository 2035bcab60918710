#pragma once
// StreamEncoder: tagged values as words, appended to a block that was made large enough before.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "zorvane/platform/Text.h"
#include "zorvane/platform/Units.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {

// Words that the encoded value takes. O(1) for scalars and arrays of numbers, else O(elements), and
// an array that several others hold counts once. Raises 5 for arrays within arrays deeper than
// kStreamDepth: no reader would take them; and as RequireFewRepeated.
[[nodiscard]] std::uint64_t StreamWordsOf(const Variant& value);

// Raises 6 when what is written for the second time and more takes above kRepeatedWords.
void RequireFewRepeated(std::uint64_t words);

// What the format cannot hold is written as its reader expects it: Null and Decimal as a type
// without data, objects as Empty. Arrays of types that no reader knows (Error, Object, Decimal) are
// written in full, objects as zeros, and an address never.
class StreamEncoder {
  public:
    // `stream` outlives the encoder and has room for all that is written.
    explicit StreamEncoder(std::span<std::int16_t> stream) noexcept : stream_(stream) {}

    [[nodiscard]] std::size_t Position() const noexcept { return position_; }  // the next word
    void Write(const Variant& value);
    // The eight words in front of the elements of a one-dimensional array.
    void WriteArrayHeader(VarType element, std::int32_t lower, std::int32_t count) noexcept;
    void WriteLong(std::uint32_t value) noexcept;  // two bare words
    // One element of an array of texts: its length and its units.
    void WriteText(const Text& text) noexcept {
        const std::u16string_view units = text.Units();
        std::int16_t* const to = Take(2 + units.size());
        PutLong(to, static_cast<std::uint32_t>(units.size()));
        CopyUnits(to + 2, units.data(), units.size());
    }
    void WriteWord(std::uint16_t word) noexcept { *Take(1) = static_cast<std::int16_t>(word); }

  private:
    // The next words, to be written.
    [[nodiscard]] std::int16_t* Take(std::size_t words) noexcept {
        return stream_.data() + std::exchange(position_, position_ + words);
    }
    void WriteArray(const Array& array);
    void WriteDecimal(const Decimal& value) noexcept;
    void WriteScalar(std::uint64_t bits, std::size_t words) noexcept;

    std::span<std::int16_t> stream_;
    std::size_t position_ = 0;
};

}  // namespace zorvane
