#include "zorvane/propbag/detail/StreamValue.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

#include "zorvane/platform/Error.h"
#include "zorvane/propbag/detail/StreamDecoder.h"
#include "zorvane/propbag/detail/StreamEncoder.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane::modZorvane {
namespace {

constexpr std::int64_t kStep = 0x8000;

// Goes through the words of a value as if they were written one part after the other.
struct Growth {
    std::int64_t Capacity;
    std::int64_t Position;

    void Add(const Variant& value) {
        if (value.IsArray()) return AddArray(value.AsArray());
        const std::int64_t words = static_cast<std::int64_t>(StreamWordsOf(value));
        const std::int64_t length = value.IsText() ? value.TextUnchecked().Length() : 0;
        Advance(words, words, length);
    }

  private:
    // Room for `margin` words, of which `words` are written.
    void Advance(std::int64_t margin, std::int64_t words, std::int64_t extra) {
        if (Capacity <= Position + margin) Capacity += kStep + extra;
        Position += words;
    }
    void AddArray(const Array& array) {
        constexpr auto kHeader = static_cast<std::int64_t>(kStreamArrayHeader);
        Advance(kHeader, kHeader, 0);
        switch (array.ElementType()) {
            case VarType::String:
                for (const Text& text : array.Elements<Text>()) {
                    Advance(2 + text.Length(), 2 + text.Length(), text.Length());
                }
                break;
            case VarType::Variant:
                for (const Variant& element : array.Elements<Variant>()) Add(element);
                break;
            default: {
                const std::int64_t data =
                    (std::int64_t{array.Count()} * StreamElementSize(array.ElementType()) + 1) / 2;
                // Kept: the margin counts the header again, which is written by now.
                Advance(data + kHeader, data, data);
            }
        }
    }
};

}  // namespace

void WriteStreamValue(Array& Stream, std::int32_t& Capacity, std::int32_t& Position,
                      const Variant& Value) {
    const std::span<const std::int16_t> old = Stream.Words();
    if (Position < 0 || Position > Capacity || Capacity != Stream.UpperBound()) {
        RaisePlatform(PlatformError::OutOfRange);
    }
    const std::uint64_t words = StreamWordsOf(Value);
    Growth growth{Capacity, Position};
    growth.Add(Value);
    if (growth.Capacity >= std::numeric_limits<std::int32_t>::max()) {
        RaisePlatform(PlatformError::Overflow);
    }
    const auto capacity = static_cast<std::int32_t>(growth.Capacity);
    if (capacity != Capacity) {
        Array larger(VarType::Integer, 0, capacity + 1);
        std::ranges::copy(old, larger.MutableElements<std::int16_t>().begin());
        std::swap(Stream, larger);
        Capacity = capacity;
    }
    StreamEncoder encoder(Stream.MutableElements<std::int16_t>().subspan(
        static_cast<std::size_t>(Position), static_cast<std::size_t>(words)));
    encoder.Write(Value);
    Position += static_cast<std::int32_t>(words);
}

Variant ReadStreamValue(const Array& Stream, std::int32_t& Position) {
    const std::span<const std::int16_t> words = Stream.Words();
    if (Position < 0) RaisePlatform(PlatformError::OutOfRange);
    StreamDecoder decoder(words, static_cast<std::size_t>(Position));
    try {
        Variant value = decoder.Read();
        Position = static_cast<std::int32_t>(decoder.Position());
        return value;
    } catch (const StreamDamage& damage) {
        throw Error(PlatformError::OutOfRange, {}, damage.what());
    }
}

}  // namespace zorvane::modZorvane
