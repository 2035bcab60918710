// Values written one by one into a stream that grows.

#include "tests/support/Testing.h"
#include "tests/unit/propbag/Words.h"
#include "zorvane/propbag/detail/StreamValue.h"

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

// The stream grows when its highest index is not greater than the position and the margin.
TEST(WriteStreamValue, ItGrowsAsSoonAsTheMarginIsNotLeft) {
    const std::int32_t step = 0x8000;
    const std::tuple<const char*, Variant, std::int32_t, std::int32_t> table[] = {
        {"Long", 5, 4, step},
        {"Byte", std::uint8_t{1}, 3, step},
        {"Empty", Variant(), 2, step},
        {"text", u"abcde", 9, step + 5},
        {"array header", Array(VarType::String, 0, 0), 8, step},
        // One word less than its margin, and the second text is what no longer fits.
        {"texts", ArrayOf(VarType::String, 0, u"abc", u"de"), 8 + 5 + 4, step + 2},
        {"numbers", Array(VarType::Long, 0, 3), 8 + 6 + 8, step + 6},
        {"odd bytes", Array(VarType::Byte, 0, 3), 8 + 2 + 8, step + 2},
        {"values", ArrayOf(VarType::Variant, 0, u"abc"), 8 + 7, step + 3},
    };
    for (const auto& [what, value, margin, growth] : table) {
        Stream enough(margin + 1);
        enough.Write(value);
        EXPECT_EQ(enough.Capacity, margin + 1) << what;
        Stream less(margin);
        less.Write(value);
        EXPECT_EQ(less.Capacity, margin + growth) << what;
        EXPECT_EQ(less.Words.UpperBound(), less.Capacity) << what;
        EXPECT_EQ(less.Position, enough.Position) << what;
        std::int32_t position = 0;
        EXPECT_EQ(ReadStreamValue(less.Words, position), value) << what;
        EXPECT_EQ(position, less.Position) << what;
    }
}

TEST(WriteStreamValue, WrongStreamsAndPositionsRaiseAndChangeNothing) {
    const struct {
        const char* what;
        VarType element;
        std::int32_t position, capacity, written, read;
    } table[] = {
        {"no words", VarType::Long, 0, 20, 13, 13},
        {"below", VarType::Integer, -1, 20, 9, 9},
        {"behind", VarType::Integer, 21, 20, 9, 9},
        {"false capacity", VarType::Integer, 0, 8, 9, 0},
    };
    for (const auto& row : table) {
        Array words(row.element, 0, 21);
        std::int32_t position = row.position;
        std::int32_t capacity = row.capacity;
        const auto write = [&] { WriteStreamValue(words, capacity, position, 1); };
        EXPECT_EQ(NumberRaisedBy(write), row.written) << row.what;
        EXPECT_EQ(words, Array(row.element, 0, 21)) << row.what;
        EXPECT_EQ(position, row.position) << row.what;
        const auto read = [&] { return ReadStreamValue(words, position); };
        EXPECT_EQ(NumberRaisedBy(read), row.read) << row.what;
    }
}

}  // namespace
}  // namespace zorvane
