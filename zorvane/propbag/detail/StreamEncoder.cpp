#include "zorvane/propbag/detail/StreamEncoder.h"

#include <bit>
#include <cstring>

#include "zorvane/platform/Error.h"

namespace zorvane {
namespace {

std::uint64_t WordsOf(const Variant& value, int depth);

std::uint64_t TextWords(const Text& text) {
    return 2 + static_cast<std::uint64_t>(text.Length());
}

std::uint64_t ArrayWords(const Array& array, int depth) {
    std::uint64_t words = kStreamArrayHeader;
    switch (array.ElementType()) {
        case VarType::String:
            for (const Text& text : array.Elements<Text>()) words += TextWords(text);
            return words;
        case VarType::Variant:
            if (depth == kStreamDepth) {
                throw Error(PlatformError::InvalidCall, {},
                            u"Arrays are nested too deep to be stored");
            }
            for (const Variant& element : array.Elements<Variant>()) {
                words += WordsOf(element, depth + 1);
            }
            return words;
        default:
            return words + (static_cast<std::uint64_t>(array.Count()) *
                                StreamElementSize(array.ElementType()) +
                            1) /
                               2;
    }
}

std::uint64_t WordsOf(const Variant& value, int depth) {
    if (value.IsArray()) return ArrayWords(value.AsArray(), depth);
    if (value.IsText()) return 2 + TextWords(value.TextUnchecked());
    return 2 + (StreamWidth(value.Type()) + 1u) / 2;
}

}  // namespace

std::uint64_t StreamWordsOf(const Variant& value) {
    return WordsOf(value, 0);
}

void StreamEncoder::Write(const Variant& value) {
    if (value.IsArray()) return WriteArray(value.AsArray());
    // An object has no form here: it is stored as nothing at all.
    const VarType type = value.IsObject() ? VarType::Empty : value.Type();
    const std::uint16_t width = StreamWidth(type);
    PutLong(Take(2), static_cast<std::uint32_t>(width) << 16 | static_cast<std::uint16_t>(type));
    if (type == VarType::String) return WriteText(value.TextUnchecked());
    WriteScalar(value.ScalarBits(), (width + 1u) / 2);
}

// The low words of `bits`, the lowest first.
void StreamEncoder::WriteScalar(std::uint64_t bits, std::size_t words) noexcept {
    std::int16_t* const to = Take(words);
    constexpr std::size_t kAll = sizeof bits / sizeof *to;
    if (std::endian::native == std::endian::little && stream_.size() - position_ >= kAll) {
        std::memcpy(to, &bits, sizeof bits);  // what is too much gets overwritten
        return;
    }
    for (std::size_t i = 0; i < words; ++i, bits >>= 16) {
        to[i] = static_cast<std::int16_t>(bits & 0xFFFF);
    }
}

void StreamEncoder::WriteArray(const Array& array) {
    const VarType element = array.ElementType();
    WriteArrayHeader(element, array.LowerBound(), array.Count());
    switch (element) {
        case VarType::String:
            for (const Text& text : array.Elements<Text>()) WriteText(text);
            break;
        case VarType::Variant:
            for (const Variant& value : array.Elements<Variant>()) Write(value);
            break;
        case VarType::Decimal:
            for (const Decimal& value : array.Elements<Decimal>()) WriteDecimal(value);
            break;
        case VarType::Object:
            for (std::int32_t i = 0; i < array.Count(); ++i) WriteLong(0);
            break;
        default: {
            const std::span<const std::byte> bytes = array.Bytes();
            PutBytes(Take((bytes.size() + 1) / 2), bytes.data(), bytes.size(), array.ElementSize());
        }
    }
}

void StreamEncoder::WriteArrayHeader(VarType element, std::int32_t lower,
                                     std::int32_t count) noexcept {
    WriteWord(static_cast<std::uint16_t>(VarType::ArrayFlag | element));
    WriteWord(StreamElementSize(element));
    WriteLong(static_cast<std::uint32_t>(count));
    WriteLong(static_cast<std::uint32_t>(lower));
    WriteLong(static_cast<std::uint32_t>(lower) + static_cast<std::uint32_t>(count) - 1);
}

// Two spare bytes, the power of ten, the sign, the high and then the low part of the number.
void StreamEncoder::WriteDecimal(const Decimal& value) noexcept {
    WriteWord(0);
    WriteWord(static_cast<std::uint16_t>(value.Scale | (value.Negative ? 0x8000 : 0)));
    WriteLong(value.High);
    WriteLong(static_cast<std::uint32_t>(value.Low & 0xFFFFFFFF));
    WriteLong(static_cast<std::uint32_t>(value.Low >> 32));
}

void StreamEncoder::WriteLong(std::uint32_t value) noexcept {
    PutLong(Take(2), value);
}

}  // namespace zorvane
