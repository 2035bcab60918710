#include "zorvane/propbag/detail/StreamDecoder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "zorvane/platform/StackLeft.h"
#include "zorvane/platform/Units.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {
namespace {

// What a level of arrays leaves of a small stack to the values in it.
constexpr std::size_t kLeastStack = kStackReserve / 4;
constexpr const char* kNoPad = "a byte that should pad a word is not 0";
constexpr const char* kTooManyElements = "an array has more elements than the stream";

bool IsNumeric(std::uint16_t element) {
    const auto type = static_cast<VarType>(element);
    return StreamWidth(type) != 0 && type != VarType::Error;
}

// Up to four words as one number, the first lowest; `room` of them are there.
std::uint64_t WordsAt(const std::int16_t* from, std::size_t count, std::size_t room) {
    std::uint64_t bits = 0;
    if (std::endian::native == std::endian::little && room * sizeof *from >= sizeof bits) {
        std::memcpy(&bits, from, sizeof bits);
        return bits & (~std::uint64_t{0} >> (64 - 16 * count));
    }
    for (std::size_t i = count; i-- != 0;) {
        bits = bits << 16 | static_cast<std::uint16_t>(from[i]);
    }
    return bits;
}

}  // namespace

struct StreamDecoder::ArrayHeader {
    std::size_t Word;     // where the array begins
    std::uint32_t Count;  // as stated; the bounds may say otherwise
    std::int32_t Lower;
    std::uint64_t Extent;  // elements between the bounds
    [[nodiscard]] std::int32_t Elements() const { return static_cast<std::int32_t>(Extent); }
};

void StreamDecoder::Doubt(bool doubtful, std::size_t word, const char* what) const {
    if (doubtful && care_ == StreamCare::Checker) throw StreamDamage(word, what);
}

Variant StreamDecoder::Read() {
    Need(2, std::min(position_, words_.size()), "the stream ends where a value is due");
    const std::uint16_t type = TakeWord();
    const std::uint16_t size = TakeWord();
    constexpr auto kArray = static_cast<std::uint16_t>(VarType::ArrayFlag);
    if ((type & kArray) != 0) return ReadArray(static_cast<std::uint16_t>(type & ~kArray), size);
    if (type == static_cast<std::uint16_t>(VarType::String)) {
        Doubt(size != 0, position_ - 1, "a text states a size");
        return ReadText();
    }
    return ReadScalar(type, size);
}

bool StreamDecoder::EnterTexts(std::int32_t count) noexcept {
    constexpr VarType kTexts = VarType::ArrayFlag | VarType::String;
    if (!Has(kStreamArrayHeader)) return false;
    const std::size_t start = position_;
    const auto upper = static_cast<std::uint32_t>(count);
    if (TakeWord() == static_cast<std::uint16_t>(kTexts) &&
        TakeWord() == StreamElementSize(VarType::String) && TakeLong() == upper &&
        TakeLong() == 1 && TakeLong() == upper) {
        return true;
    }
    position_ = start;
    return false;
}

Variant StreamDecoder::ReadArray(std::uint16_t element, std::uint16_t size) {
    const std::size_t word = position_ - 2;
    Need(6, word, "the stream ends within the header of an array");
    ArrayHeader header{word, TakeLong(), static_cast<std::int32_t>(TakeLong()), 0};
    const auto upper = static_cast<std::int32_t>(TakeLong());
    if (element > kGreatestStreamType) {
        Doubt(true, word, "an array by reference");
        position_ += 2;
        return {};
    }
    const auto type = static_cast<VarType>(element);
    if (type != VarType::String && type != VarType::Variant && !IsNumeric(element)) {
        // Kept: the elements are not skipped, so what follows is read amiss.
        Doubt(true, word, "an array of a type that is written but never read");
        return {};
    }
    const std::int64_t extent = std::int64_t{upper} - header.Lower + 1;
    if (extent < 0 || extent > std::numeric_limits<std::int32_t>::max()) {
        throw StreamDamage(word + 4, "the bounds of an array hold no elements");
    }
    header.Extent = static_cast<std::uint64_t>(extent);
    Doubt(header.Extent != header.Count, word + 2, "an array's count and bounds disagree");
    Doubt(size != StreamElementSize(type), word + 1, "an array states a wrong element size");
    if (type == VarType::String) return ReadTexts(header);
    if (type == VarType::Variant) return ReadValues(header);
    return ReadNumbers(type, size, header);
}

Array StreamDecoder::ReadNumbers(VarType element, std::uint16_t size, const ArrayHeader& header) {
    const std::uint64_t data = std::uint64_t{header.Count} * size;
    const std::uint64_t room = header.Extent * ArrayElementSize(element);
    if (data > room) throw StreamDamage(header.Word + 2, "an array's data exceeds its bounds");
    Need((data + 1) / 2, header.Word + 2, kTooManyElements);
    TakeSpare(room - data, header.Word + 2);
    Array made = room == data ? Array::Uninitialised(element, header.Lower, header.Elements())
                              : Array(element, header.Lower, header.Elements());
    TakeBytes(made.MutableBytes().data(), words_.data() + position_, static_cast<std::size_t>(data),
              ArrayElementSize(element));
    const std::size_t last = position_ + static_cast<std::size_t>(data / 2);
    Doubt(data % 2 != 0 && static_cast<std::uint16_t>(words_[last]) > 0xFF, last, kNoPad);
    // Kept: an odd number of bytes is rounded up for bytes alone.
    position_ += static_cast<std::size_t>(element == VarType::Byte ? (data + 1) / 2 : data / 2);
    return made;
}

// Kept: the size word alone decides how much is read; 0 and anything above 8 is Empty and no more
// words, which is how Null and Decimal come back.
Variant StreamDecoder::ReadScalar(std::uint16_t type, std::uint16_t size) {
    const auto kind = static_cast<VarType>(type);
    const bool known = StreamWidth(kind) != 0 || kind == VarType::Empty || kind == VarType::Null ||
                       kind == VarType::Decimal;
    Doubt(!known, position_ - 2, "an unknown type");
    Doubt(size != StreamWidth(kind), position_ - 1, "a size that the type does not have");
    const auto width = static_cast<std::int16_t>(size);
    if (width < 1 || width > 8) return {};
    Need((size + 1u) / 2, position_ - 2, "the stream ends within a value");
    const std::size_t taken = (size + 1u) / 2;
    std::uint64_t bits = WordsAt(words_.data() + position_, taken, words_.size() - position_);
    position_ += taken;
    const std::uint64_t value = ~std::uint64_t{0} >> (64 - 8 * size);
    Doubt((bits & ~value) != 0, position_ - 1, kNoPad);
    bits &= value;
    Doubt(kind == VarType::Boolean && bits != 0 && bits != 0xFFFF, position_ - 1,
          "a Boolean that is neither true nor false");
    if (kind == VarType::Decimal) return Variant::FromDecimal({.Low = bits});
    return Variant::FromScalarBits(kind, bits);
}

// The bounds say how many texts follow; the count is not looked at.
Array StreamDecoder::ReadTexts(const ArrayHeader& header) {
    Need(header.Extent * kLeastValue, header.Word + 2, kTooManyElements);
    Array made(VarType::String, header.Lower, header.Elements());
    for (Text& text : made.MutableElements<Text>()) text = ReadText();
    return made;
}

Text StreamDecoder::ReadUnits() {
    Need(2, position_, "the stream ends where a text is due");
    const std::uint32_t length = TakeLong();
    if (length > Text::kGreatestLength) {
        throw StreamDamage(position_ - 2, "a text is longer than any can be");
    }
    Need(length, position_ - 2, "a text is longer than the stream");
    Text text = texts_.Make(
        length, [&](char16_t* units) { CopyUnits(units, words_.data() + position_, length); });
    position_ += length;
    return text;
}

// Each element takes two words at least, and none may be promised twice: without that, every level
// of nested arrays could claim the whole rest of the stream again.
Array StreamDecoder::ReadValues(const ArrayHeader& header) {
    if (depth_ == kStreamDepth || StackLeft().value_or(kLeastStack) < kLeastStack) {
        throw StreamDamage(header.Word, "arrays are nested too deep");
    }
    if (header.Count == 0) {
        TakeSpare(header.Extent * sizeof(Variant), header.Word + 2);
        return {VarType::Variant, header.Lower, header.Elements()};
    }
    Need(header.Extent * kLeastValue, header.Word + 2, kTooManyElements);
    ++depth_;
    Array made(VarType::Variant, header.Lower, header.Elements());
    promised_ += header.Extent * kLeastValue;
    for (Variant& value : made.MutableElements<Variant>()) {
        promised_ -= kLeastValue;
        value = Read();
    }
    --depth_;
    return made;
}

std::uint32_t StreamDecoder::TakeLong() noexcept {
    position_ += 2;
    return LongAt(words_.data() + position_ - 2);
}

void StreamDecoder::TakeSpare(std::uint64_t bytes, std::size_t word) {
    if (bytes > spare_) {
        throw StreamDamage(word, "an array's bounds exceed its data",
                           words_.size() + (bytes - spare_ + 1) / 2);
    }
    spare_ -= bytes;
}

}  // namespace zorvane
