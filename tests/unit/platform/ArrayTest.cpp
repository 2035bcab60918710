#include "platform/Array.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>

#include "platform/Variant.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kGreatest = std::numeric_limits<std::int32_t>::max();

TEST(Array_Bounds, AreKeptOrRefused) {
    const struct {
        const char* what;
        VarType element;
        std::int32_t lower;
        std::int32_t count;
        std::int32_t error;
    } rows[] = {
        {"from zero", VarType::Byte, 0, 3, 0},
        {"from minus one", VarType::Byte, -1, 3, 0},
        {"up to the last position", VarType::Byte, kGreatest - 1, 2, 0},
        {"past the last position", VarType::Byte, kGreatest, 2, 9},
        {"none", VarType::Byte, 0, 0, 0},
        {"none, at the first position", VarType::Byte, kLeast, 0, 9},
        {"one, at the first position", VarType::Byte, kLeast, 1, 0},
        {"less than none", VarType::Byte, 0, -1, 9},
        {"no type", VarType::Empty, 0, 1, 5},
        {"Null", VarType::Null, 0, 1, 5},
        {"arrays directly", VarType::ArrayFlag | VarType::Long, 0, 1, 5},
    };
    for (const auto& row : rows) {
        Array made;
        EXPECT_EQ(NumberRaisedBy([&] { made = Array(row.element, row.lower, row.count); }),
                  row.error)
            << row.what;
        if (row.error != 0) continue;
        EXPECT_EQ(made.LowerBound(), row.lower) << row.what;
        EXPECT_EQ(std::int64_t{made.UpperBound()}, std::int64_t{row.lower} + row.count - 1)
            << row.what;
        for (const std::int64_t outside :
             {std::int64_t{row.lower} - 1, std::int64_t{row.lower} + row.count}) {
            if (outside < kLeast || outside > kGreatest) continue;
            const auto index = static_cast<std::int32_t>(outside);
            EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(made.At(index)); }), 9) << row.what;
            EXPECT_EQ(NumberRaisedBy([&] { made.SetAt(index, 1); }), 9) << row.what;
        }
    }
    EXPECT_EQ(NumberRaisedBy([] { static_cast<void>(Array().At(0)); }), 9);
}

TEST(Array_SetAt, ConvertsToTheElementTypeOrRaises) {
    const struct {
        VarType element;
        Variant given;
        Variant stored;
        std::int32_t error;
    } rows[] = {
        {VarType::Integer, 2.5, std::int16_t{2}, 0},
        {VarType::Integer, 40000, {}, 6},
        {VarType::Long, "12", 12, 0},
        {VarType::Long, "x", {}, 13},
        {VarType::Single, 0.5, 0.5f, 0},
        {VarType::Double, 7, 7.0, 0},
        {VarType::Currency, 1.5, Variant::FromCurrency(15000), 0},
        {VarType::Date, 1.5, Variant::FromDate(1.5), 0},
        {VarType::String, 42, "42", 0},
        {VarType::String, Variant::Null(), {}, 13},
        {VarType::Object, Ref<Object>(), Ref<Object>(), 0},
        {VarType::Object, 5, {}, 13},
        {VarType::Error, Variant::FromError(5), Variant::FromError(5), 0},
        {VarType::Boolean, 3, true, 0},
        {VarType::Variant, "as it is", "as it is", 0},
        {VarType::Variant, Array(VarType::Byte, 0, 1), Array(VarType::Byte, 0, 1), 0},
        {VarType::Decimal, Variant::FromDecimal({5, 0, 1, true}),
         Variant::FromDecimal({5, 0, 1, true}), 0},
        {VarType::Byte, 255, std::uint8_t{255}, 0},
        {VarType::Byte, -1, {}, 6},
    };
    for (const auto& row : rows) {
        Array array(row.element, 5, 2);
        const Variant before = array.At(6);
        const std::int32_t error = NumberRaisedBy([&] { array.SetAt(6, row.given); });
        EXPECT_EQ(error, row.error) << row.given;
        EXPECT_EQ(array.At(6), error == 0 ? row.stored : before) << row.given;
        EXPECT_EQ(array.At(5), before) << "the neighbour of " << row.given;
    }
}

TEST(Array_Copy, SharesUntilOneIsWritten) {
    for (const auto element : {VarType::Long, VarType::String, VarType::Variant}) {
        Array first(element, 1, 3);
        first.SetAt(2, 7);
        Array second = first;
        second.SetAt(3, 8);
        EXPECT_EQ(second.At(2).ToLong(), 7);
        EXPECT_NE(first, second);
        EXPECT_EQ(first.At(3), Array(element, 0, 1).At(0));
    }
}

TEST(Array_Release, LetsGoOfEveryElementOnce) {
    for (const auto element : {VarType::Object, VarType::Variant}) {
        {
            Array first(element, 0, 2);
            first.SetAt(0, MakeObject<CountedObject>());
            first.SetAt(1, MakeObject<CountedObject>());
            Array second = first;
            second.SetAt(0, Ref<Object>());  // unshares: element 1 has two holders now
            EXPECT_EQ(CountedObject::Alive(), 2);
            first = Array();
            EXPECT_EQ(CountedObject::Alive(), 1);
        }
        EXPECT_EQ(CountedObject::Alive(), 0);
    }
}

TEST(Array_Bytes, AreThereForNumbersAndRefusedForCountedElements) {
    const std::array<std::int16_t, 3> words = {1, -2, 3};
    Array array = Array::OfWords(words);
    EXPECT_EQ(array.LowerBound(), 0);
    EXPECT_EQ(array.Words()[1], -2);
    const Array kept = array;
    ASSERT_EQ(array.MutableBytes().size(), 6u);
    std::memset(array.MutableBytes().data(), 0xFF, 2);
    EXPECT_EQ(array.Words()[0], -1);
    EXPECT_EQ(kept.Words()[0], 1);
    for (const auto element : {VarType::String, VarType::Object, VarType::Variant}) {
        EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(Array(element, 0, 1).Bytes()); }), 13);
    }
    EXPECT_EQ(NumberRaisedBy([] { static_cast<void>(Array(VarType::Long, 0, 1).Words()); }), 13);
    EXPECT_EQ(NumberRaisedBy([] { static_cast<void>(Array().Bytes()); }), 13);
}

TEST(Array_Equal, NeedsTypeBoundsAndElements) {
    EXPECT_EQ(Array(), Array());
    EXPECT_EQ(Array(VarType::Long, 1, 2), Array(VarType::Long, 1, 2));
    EXPECT_NE(Array(VarType::Long, 1, 2), Array(VarType::Long, 0, 2));
    EXPECT_NE(Array(VarType::Long, 1, 2), Array(VarType::Single, 1, 2));
    EXPECT_NE(Array(VarType::Long, 1, 2), Array(VarType::Long, 1, 3));
    Array texts(VarType::String, 0, 1);
    texts.SetAt(0, "a");
    EXPECT_NE(texts, Array(VarType::String, 0, 1));
}

TEST(Array_Nested, HoldsItsOldSelfInsteadOfACycle) {
    Array outer(VarType::Variant, 0, 1);
    outer.SetAt(0, outer);
    EXPECT_TRUE(outer.At(0).AsArray().At(0).IsEmpty());
}

}  // namespace
}  // namespace zorvane
