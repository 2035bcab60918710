#pragma once
// The words of a bag's stream: 32-bit numbers as two words, low word first, and blocks of bytes,
// low byte of a word first, whatever the order of bytes on this machine.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "zorvane/platform/VarType.h"

namespace zorvane {

// Encoded types above this one, array flag removed, are by-reference types that nobody can read.
inline constexpr std::uint16_t kGreatestStreamType = 0x2011;
// Arrays of tagged values may hold arrays, and so on: this deep and no deeper.
inline constexpr int kStreamDepth = 256;

// A stream cannot refer to what it holds already, so whatever several arrays or objects of a value
// hold is written for each of them; all that comes again may take so many words in all.
inline constexpr std::uint64_t kRepeatedWords = std::uint64_t{1} << 26;

// Words in front of the elements of an array.
inline constexpr std::uint64_t kStreamArrayHeader = 8;

// Bytes of a scalar's data in the stream; 0 for a type that is written without any.
[[nodiscard]] constexpr std::uint16_t StreamWidth(VarType type) noexcept {
    return static_cast<std::uint16_t>(ScalarWidth(type));
}

// Bytes that the stream states for one element of an array; fixed, whatever an element takes here.
[[nodiscard]] constexpr std::uint16_t StreamElementSize(VarType element) noexcept {
    switch (element) {
        case VarType::String:
        case VarType::Object:
            return 4;
        case VarType::Variant:
        case VarType::Decimal:
            return 16;
        default:
            return StreamWidth(element);
    }
}

inline void PutLong(std::int16_t* to, std::uint32_t value) noexcept {
    to[0] = static_cast<std::int16_t>(value & 0xFFFF);
    to[1] = static_cast<std::int16_t>(value >> 16);
}

[[nodiscard]] inline std::uint32_t LongAt(const std::int16_t* from) noexcept {
    return static_cast<std::uint16_t>(from[0]) | std::uint32_t{static_cast<std::uint16_t>(from[1])}
                                                     << 16;
}

// Where byte `at` of a stream of elements lies among elements whose high byte comes first.
[[nodiscard]] constexpr std::size_t SwappedByte(std::size_t at, std::size_t elementSize) noexcept {
    return at - at % elementSize + (elementSize - 1 - at % elementSize);
}

// Elements as they lie in memory (their bytes in the order kOrder) to words and back. `to` has room
// for the bytes rounded up to whole words (PutBytes), or for whole elements (TakeBytes); a last
// half word is padded with 0. Where kOrder is not this machine's, a test plays the other machine.
template <std::endian kOrder = std::endian::native>
void PutBytes(std::int16_t* to, const std::byte* from, std::size_t bytes,
              std::size_t elementSize) noexcept {
    if (bytes == 0) return;
    if (bytes % 2 != 0) to[bytes / 2] = 0;
    if constexpr (kOrder == std::endian::little && std::endian::native == std::endian::little) {
        std::memcpy(to, from, bytes);
    } else {
        for (std::size_t i = 0; i < bytes; ++i) {
            const std::size_t at = kOrder == std::endian::big ? SwappedByte(i, elementSize) : i;
            const auto byte = std::to_integer<std::uint16_t>(from[at]);
            const auto before = i % 2 == 0 ? 0 : static_cast<std::uint16_t>(to[i / 2]);
            to[i / 2] = static_cast<std::int16_t>(before | (i % 2 == 0 ? byte : byte << 8));
        }
    }
}

template <std::endian kOrder = std::endian::native>
void TakeBytes(std::byte* to, const std::int16_t* from, std::size_t bytes,
               std::size_t elementSize) noexcept {
    if (bytes == 0) return;
    if constexpr (kOrder == std::endian::little && std::endian::native == std::endian::little) {
        std::memcpy(to, from, bytes);
    } else {
        for (std::size_t i = 0; i < bytes; ++i) {
            const std::size_t at = kOrder == std::endian::big ? SwappedByte(i, elementSize) : i;
            const auto word = static_cast<std::uint16_t>(from[i / 2]);
            to[at] = static_cast<std::byte>(i % 2 == 0 ? word & 0xFF : word >> 8);
        }
    }
}

}  // namespace zorvane
