#include "zorvane/propbag/detail/StreamEncoder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <unordered_map>

#include "zorvane/platform/Error.h"
#include "zorvane/platform/NumberText.h"

namespace zorvane {
namespace {

// What a value takes in a stream: its words, and how deep arrays of tagged values lie in it.
struct Extent {
    std::uint64_t Words = 0;
    int Depth = 0;
};

std::uint64_t TextWords(const Text& text) {
    return 2 + static_cast<std::uint64_t>(text.Length());
}

std::uint64_t PlainWords(const Variant& value) {
    if (value.IsText()) return 2 + TextWords(value.TextUnchecked());
    return 2 + (StreamWidth(value.Type()) + 1u) / 2;
}

// Of an array of anything but tagged values.
std::uint64_t FlatWords(const Array& array) {
    std::uint64_t words = kStreamArrayHeader;
    if (array.ElementType() == VarType::String) {
        for (const Text& text : array.Elements<Text>()) words += TextWords(text);
        return words;
    }
    const std::uint64_t size = StreamElementSize(array.ElementType());
    return words + (static_cast<std::uint64_t>(array.Count()) * size + 1) / 2;
}

// Looks at an array that several hold only once, however many ways lead to it.
class Measure {
  public:
    // `above`: the arrays of tagged values that it lies in.
    Extent Of(const Array& array, int above) {
        if (array.ElementType() == VarType::Variant) return OfValues(array, above);
        return {FlatWords(array)};
    }

  private:
    Extent OfShared(const Array& array, int above) {
        const void* const elements = array.Elements<std::byte>().data();
        if (const auto known = shared_.find(elements); known != shared_.end()) {
            repeated_ += known->second.Words;
            RequireFewRepeated(repeated_);
            RequireDepth(above + known->second.Depth);
            return known->second;
        }
        return shared_[elements] = Of(array, above);
    }
    Extent OfValues(const Array& array, int above) {
        RequireDepth(above + 1);
        Extent extent{kStreamArrayHeader, 1};
        for (const Variant& element : array.Elements<Variant>()) {
            if (!element.IsArray()) {
                extent.Words += PlainWords(element);
                continue;
            }
            const Array& inner = element.AsArray();
            const auto [words, depth] =
                inner.IsShared() ? OfShared(inner, above + 1) : Of(inner, above + 1);
            extent.Words += words;
            extent.Depth = std::max(extent.Depth, depth + 1);
        }
        return extent;
    }
    static void RequireDepth(int depth) {
        if (depth <= kStreamDepth) return;
        throw Error(PlatformError::InvalidCall, {}, u"Arrays are nested too deep to be stored");
    }

    std::unordered_map<const void*, Extent> shared_;  // by where their elements lie
    std::uint64_t repeated_ = 0;
};

}  // namespace

std::uint64_t StreamWordsOf(const Variant& value) {
    if (!value.IsArray()) return PlainWords(value);
    const Array& array = value.AsArray();
    const bool flat = array.ElementType() != VarType::Variant;
    return flat ? FlatWords(array) : Measure().Of(array, 0).Words;
}

void RequireFewRepeated(std::uint64_t words) {
    if (words <= kRepeatedWords) return;
    throw Error(PlatformError::Overflow, {},
                Text("What several hold is written for each of them, and takes more words than ") +
                    LongText(kRepeatedWords));
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
