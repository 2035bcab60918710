#include "runtime/Comparers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"

namespace zorvane::modZorvane {
namespace {

constexpr CompareParameters kBinary{0, 0};
constexpr CompareParameters kText{1, 0};

// Values go through eight readable bytes each, as every comparer may ask for.
template <class T>
std::int32_t Compared(VarType type, T a, T b, const CompareParameters& parameters = kBinary) {
    struct Cell {
        alignas(8) unsigned char bytes[8 + sizeof(T)] = {};
    } left, right;
    std::memcpy(left.bytes, &a, sizeof a);
    std::memcpy(right.bytes, &b, sizeof b);
    return ComparerForType(type)(left.bytes, right.bytes, &parameters, 0);
}

TEST(ComparerForType, EveryOtherCodeHasNone) {
    for (int code = 0; code < 40; ++code) {
        const bool known = (code >= 2 && code <= 9) || code == 11 || code == 12;
        EXPECT_EQ(ComparerForType(static_cast<VarType>(code)) != nullptr, known) << code;
    }
}

TEST(Comparers, NumbersCompareBySignAndWidth) {
    EXPECT_EQ(Compared<std::int16_t>(VarType::Integer, -1, 1), -1);
    EXPECT_EQ(Compared<std::int16_t>(VarType::Integer, 7, 7), 0);
    EXPECT_EQ(Compared<std::int32_t>(VarType::Long, std::numeric_limits<std::int32_t>::max(),
                                     std::numeric_limits<std::int32_t>::min()),
              1);  // a subtraction would overflow
    EXPECT_EQ(Compared<std::int64_t>(VarType::Currency, 0x100000000, 0xFFFFFFFF), 1);
    EXPECT_EQ(Compared<std::int64_t>(VarType::Currency, -1, 0), -1);
    EXPECT_EQ(Compared(VarType::Single, 1.5F, 1.25F), 1);
    EXPECT_EQ(Compared(VarType::Date, 1.0, 2.0), -1);
}

TEST(Comparers, NotANumberEqualsEverything) {
    EXPECT_EQ(Compared(VarType::Single, std::nanf(""), 1.0F), 0);
    EXPECT_EQ(Compared(VarType::Double, 1.0, std::nan("")), 0);
    EXPECT_EQ(Compared(VarType::Date, std::nan(""), std::nan("")), 0);
}

TEST(Comparers, KeptABooleanComparesWithTheSixBytesBehindIt) {
    struct Boolean {
        std::int16_t value;
        std::int16_t behind[3];
    };
    EXPECT_EQ(Compared(VarType::Boolean, Boolean{0, {0, 0, 0}}, Boolean{-1, {0, 0, 0}}), -1);
    EXPECT_EQ(Compared(VarType::Boolean, Boolean{0, {0, 0, 1}}, Boolean{-1, {0, 0, 0}}), 1);
}

TEST(Comparers, TextsFollowTheMode) {
    const Text lower = u"b";
    const Text upper = u"B";
    const Text underscore = u"_";
    EXPECT_EQ(CompareString(&lower, &upper, &kBinary, 0), 1);
    EXPECT_EQ(CompareString(&lower, &upper, &kText, 0), 0);
    EXPECT_EQ(CompareString(&underscore, &upper, &kBinary, 0), 1);
    EXPECT_EQ(CompareString(&underscore, &upper, &kText, 0), -1);
}

TEST(Comparers, ObjectsCompareByWholeAddress) {
    const Ref<Object> a = MakeObject<CountedObject>();
    const Ref<Object> b = MakeObject<CountedObject>();
    EXPECT_EQ(CompareObject(&a, &b, &kBinary, 0), -CompareObject(&b, &a, &kBinary, 0));
    EXPECT_NE(CompareObject(&a, &b, &kBinary, 0), 0);
    EXPECT_EQ(CompareObject(&a, &a, &kBinary, 0), 0);
}

TEST(CompareVariant, NumbersOrderAsText) {
    const Variant ten = 10;
    const Variant nine = 9;
    const Variant text = u"10";
    EXPECT_EQ(CompareVariant(&ten, &nine, &kBinary, 0), -1);
    EXPECT_EQ(CompareVariant(&ten, &text, &kBinary, 0), 0);
    const Variant object = MakeObject<CountedObject>();
    EXPECT_EQ(CompareVariant(&object, &object, &kBinary, 0), 0);
}

TEST(CompareVariant, AValueWithoutTextRaises) {
    const Variant null = Variant::Null();
    const Variant array = Array(VarType::Integer, 0, 2);
    const Variant one = 1;
    EXPECT_EQ(NumberRaisedBy([&] { CompareVariant(&one, &null, &kBinary, 0); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { CompareVariant(&array, &one, &kBinary, 0); }), 13);
}

TEST(AddOffset, WrapsInsteadOfRaising) {
    EXPECT_EQ(AddOffset(0xFFFFFFFF, 2), 1u);
}

}  // namespace
}  // namespace zorvane::modZorvane
