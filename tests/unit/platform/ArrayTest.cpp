#include "zorvane/platform/Array.h"

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

TEST(Array_Bounds, AreKeptOrRefused) {
    const struct {
        const char* what;
        VarType element;
        std::int32_t lower, count, error;
    } rows[] = {
        {"up to the last position", VarType::Byte, INT32_MAX - 1, 2, 0},
        {"past the last position", VarType::Byte, INT32_MAX, 2, 9},
        {"none", VarType::Byte, 0, 0, 0},
        {"in a large block", VarType::Long, 0, 1 << 20, 0},
        {"none, at the first position", VarType::Byte, INT32_MIN, 0, 9},
        {"one, at the first position", VarType::Byte, INT32_MIN, 1, 0},
        {"less than none", VarType::Byte, 0, -1, 9},
        {"no type", VarType::Empty, 0, 1, 5},
        {"arrays directly", VarType::ArrayFlag | VarType::Long, 0, 1, 5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Array made;
        const auto make = [&] { made = Array(row.element, row.lower, row.count); };
        EXPECT_EQ(NumberRaisedBy(make), row.error);
        if (row.error != 0) continue;
        const std::int64_t lower = row.lower;
        EXPECT_EQ(made.LowerBound(), lower);
        EXPECT_EQ(made.UpperBound(), lower + row.count - 1);
        for (const std::int64_t outside : {lower - 1, lower + row.count}) {
            const auto index = static_cast<std::int32_t>(outside);
            if (index != outside) continue;
            EXPECT_EQ(NumberRaisedBy([&] { return made.At(index); }), 9);
            EXPECT_EQ(NumberRaisedBy([&] { made.SetAt(index, 1); }), 9);
        }
    }
    EXPECT_EQ(NumberRaisedBy([] { return Array().At(0); }), 9);
}

TEST(Array_SetAt, WhatDoesNotFitRaisesAndStoresNothing) {
    const std::tuple<VarType, Variant, std::int32_t> rows[] = {
        {VarType::Integer, 40000, 6},
        {VarType::String, Variant::Null(), 13},
        {VarType::Object, 5, 13},
    };
    for (const auto& [element, given, error] : rows) {
        Array array(element, 5, 2);
        EXPECT_EQ(NumberRaisedBy([&, to = given] { array.SetAt(6, to); }), error) << given;
        EXPECT_EQ(array, Array(element, 5, 2)) << given;
    }
}

TEST(Array_Copy, SharesUntilOneIsWrittenAndReleasesEveryElementOnce) {
    for (const auto element : {VarType::Long, VarType::String, VarType::Variant}) {
        Array first(element, 1, 3);
        first.SetAt(2, 7);
        Array second = first;
        second.SetAt(3, 8);
        EXPECT_EQ(second.At(2).ToLong(), 7);
        EXPECT_NE(first, second);
        EXPECT_EQ(first.At(3), Array(element, 0, 1).At(0));
    }
    for (const auto element : {VarType::Object, VarType::Variant}) {
        Array first(element, 0, 2);
        first.SetAt(0, MakeObject<CountedObject>());
        first.SetAt(1, MakeObject<CountedObject>());
        Array second = first;
        second.SetAt(0, Ref<Object>());  // unshares: element 1 has two holders now
        EXPECT_EQ(CountedObject::Alive(), 2);
        first = Array();
        EXPECT_EQ(CountedObject::Alive(), 1);
        second = Array();
        EXPECT_EQ(CountedObject::Alive(), 0);
    }
    Array outer(VarType::Variant, 0, 1);
    outer.SetAt(0, outer);  // holds its old self, no cycle
    EXPECT_TRUE(outer.At(0).AsArray().At(0).IsEmpty());
}

// Catches recursion in the end of a nest or in a comparison, which misses the innermost value; and
// one that goes every way to it, as many as 2^300000.
TEST(Array_Nest, HoweverDeepNeedsNoStackAndEndsWithItsLastHolder) {
    const auto nestAround = [](Variant nest) {
        for (int depth = 0; depth < 300000; ++depth) {
            Array around(VarType::Variant, 0, 2);
            around.SetAt(0, nest);
            around.SetAt(1, nest);
            nest = around;
        }
        return nest;
    };
    Variant inner = nestAround(MakeObject<CountedObject>());
    Variant outer = nestAround(inner);
    outer = nestAround(1);
    EXPECT_EQ(CountedObject::Alive(), 1);
    inner = Variant();
    EXPECT_EQ(CountedObject::Alive(), 0);
    EXPECT_TRUE(outer == nestAround(1));
    EXPECT_FALSE(outer == nestAround(2));
}

TEST(Array_Bytes, AreThereForNumbersAndRefusedForCountedElements) {
    Array array = Array::OfWords(std::array<std::int16_t, 3>{1, -2, 3});
    const Array kept = array;
    ASSERT_EQ(array.MutableBytes().size(), 6u);
    std::memset(array.MutableBytes().data(), 0xFF, 2);
    EXPECT_EQ(array.Words()[0], -1);
    EXPECT_EQ(kept.Words()[0], 1);
    EXPECT_EQ(kept.At(1), Variant(std::int16_t{-2}));
    for (const auto element : {VarType::String, VarType::Object, VarType::Variant}) {
        EXPECT_EQ(NumberRaisedBy([&] { return Array(element, 0, 1).Bytes(); }), 13);
    }
    EXPECT_EQ(NumberRaisedBy([] { return Array(VarType::Long, 0, 1).Words(); }), 13);
    EXPECT_EQ(NumberRaisedBy([] { return Array().Bytes(); }), 13);
}

TEST(Array_Equal, NeedsTypeBoundsAndElements) {
    const Array two(VarType::Long, 1, 2);
    EXPECT_EQ(Array(), Array());
    EXPECT_EQ(two, Array(VarType::Long, 1, 2));
    EXPECT_NE(two, Array(VarType::Long, 0, 2));
    EXPECT_NE(two, Array(VarType::Single, 1, 2));
    EXPECT_NE(two, Array(VarType::Long, 1, 3));
    const Variant values[] = {Variant::FromDecimal({5, 0, 1, true}), MakeObject<CountedObject>(),
                              Variant::FromError(5), u"text"};
    for (const Variant& value : values) {
        for (const auto element : {value.Type(), VarType::Variant}) {
            Array other(element, 0, 1);
            other.SetAt(0, value);
            EXPECT_EQ(other.At(0), value);
            EXPECT_NE(other, Array(element, 0, 1)) << value;
        }
    }
}

}  // namespace
}  // namespace zorvane
