// Values written one by one into a stream that grows.

#include <gtest/gtest.h>

#include <functional>

#include "platform/Error.h"
#include "propbag/StreamValue.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/unit/Raises.h"
#include "tests/unit/propbag/Words.h"

namespace zorvane {
namespace {

using modZorvane::ReadStreamValue;
using modZorvane::WriteStreamValue;

struct Stream {
    explicit Stream(std::int32_t capacity)
        : Words(VarType::Integer, 0, capacity + 1), Capacity(capacity) {}
    void Write(const Variant& value) { WriteStreamValue(Words, Capacity, Position, value); }

    Array Words;
    std::int32_t Capacity;
    std::int32_t Position = 0;
};

TEST(WriteStreamValue, ABagWrittenValueByValueIsTheBagsOwnStream) {
    Array names(VarType::String, 1, 2);
    names.SetAt(1, u"Caption");
    names.SetAt(2, u"Left");
    Stream stream(65536);
    stream.Words.SetAt(0, -1);
    stream.Words.SetAt(1, -1);
    stream.Position = 2;
    for (const Variant& value :
         {Variant(2), Variant(names), Variant(Array(VarType::String, 1, 2)), Variant(u"Hi"),
          Variant(1200), Variant(16), Variant(true), Variant(true)}) {
        stream.Write(value);
    }
    EXPECT_EQ(stream.Position, 61);
    EXPECT_EQ(stream.Capacity, 65536);
    EXPECT_EQ(ToHex(stream.Words.Words().first(61)), ToHex(TwoEntries()));
    stream.Position = 2;
    EXPECT_EQ(ReadStreamValue(stream.Words, stream.Position), Variant(2));
    EXPECT_EQ(ReadStreamValue(stream.Words, stream.Position), Variant(names));
    EXPECT_EQ(stream.Position, 29);
}

// The stream grows when its highest index is not greater than the position and the margin.
TEST(WriteStreamValue, ItGrowsAsSoonAsTheMarginIsNotLeft) {
    const std::int32_t step = 0x8000;
    Array texts(VarType::String, 0, 2);
    texts.SetAt(0, u"abc");
    texts.SetAt(1, u"de");
    Array values(VarType::Variant, 0, 1);
    values.SetAt(0, u"abc");
    const struct {
        const char* what;
        Variant value;
        std::int32_t margin;
        std::int32_t growth;
    } table[] = {
        {"Long", 5, 4, step},
        {"Boolean", true, 3, step},
        {"Byte", std::uint8_t{1}, 3, step},
        {"Double", 0.5, 6, step},
        {"Empty", Variant(), 2, step},
        {"text", u"abcde", 9, step + 5},
        {"array header", Array(VarType::String, 0, 0), 8, step},
        // One word less than its margin, and the second text is what no longer fits.
        {"texts", texts, 8 + 5 + 4, step + 2},
        {"numbers", Array(VarType::Long, 0, 3), 8 + 6 + 8, step + 6},
        {"odd bytes", Array(VarType::Byte, 0, 3), 8 + 2 + 8, step + 2},
        {"values", values, 8 + 7, step + 3},
    };
    for (const auto& row : table) {
        Stream enough(row.margin + 1);
        enough.Write(row.value);
        EXPECT_EQ(enough.Capacity, row.margin + 1) << row.what;
        Stream less(row.margin);
        less.Write(row.value);
        EXPECT_EQ(less.Capacity, row.margin + row.growth) << row.what;
        EXPECT_EQ(less.Words.UpperBound(), less.Capacity) << row.what;
        EXPECT_EQ(less.Position, enough.Position) << row.what;
        std::int32_t position = 0;
        EXPECT_EQ(ReadStreamValue(less.Words, position), row.value) << row.what;
        EXPECT_EQ(position, less.Position) << row.what;
    }
}

TEST(WriteStreamValue, WrongStreamsAndPositionsRaiseAndChangeNothing) {
    Stream stream(20);
    Array longs(VarType::Long, 0, 9);
    std::int32_t position = 0;
    std::int32_t negative = -1;
    std::int32_t behind = 21;
    std::int32_t capacity = 8;
    std::int32_t twenty = 20;
    const struct {
        const char* what;
        std::function<void()> run;
        std::int32_t number;
    } table[] = {
        {"no words", [&] { WriteStreamValue(longs, capacity, position, 1); }, 13},
        {"below", [&] { WriteStreamValue(stream.Words, twenty, negative, 1); }, 9},
        {"behind", [&] { WriteStreamValue(stream.Words, twenty, behind, 1); }, 9},
        {"false capacity", [&] { WriteStreamValue(stream.Words, capacity, position, 1); }, 9},
        {"read no words", [&] { static_cast<void>(ReadStreamValue(longs, position)); }, 13},
        {"read below", [&] { static_cast<void>(ReadStreamValue(stream.Words, negative)); }, 9},
        {"read behind", [&] { static_cast<void>(ReadStreamValue(stream.Words, behind)); }, 9},
    };
    for (const auto& row : table) EXPECT_EQ(NumberRaisedBy(row.run), row.number) << row.what;
    EXPECT_EQ(position, 0);
    EXPECT_EQ(behind, 21);
    EXPECT_EQ(stream.Words, Array(VarType::Integer, 0, 21));
}

}  // namespace
}  // namespace zorvane
