#include "zorvane/runtime/Comparers.h"

#include "tests/support/Testing.h"

namespace zorvane::modZorvane {
namespace {

constexpr CompareParameters kBinary{0, 0};
constexpr CompareParameters kText{1, 0};

// Values go through eight readable bytes each, as every comparer may ask for.
template <class T>
std::int32_t Compared(VarType type, T a, T b) {
    struct Cell {
        alignas(8) unsigned char bytes[8 + sizeof(T)] = {};
    } left, right;
    std::memcpy(left.bytes, &a, sizeof a);
    std::memcpy(right.bytes, &b, sizeof b);
    return ComparerForType(type)(left.bytes, right.bytes, &kBinary, 0);
}

TEST(ComparerForType, EveryOtherCodeHasNone) {
    for (int code = 0; code < 40; ++code) {
        const bool known = (code >= 2 && code <= 9) || code == 11 || code == 12;
        EXPECT_EQ(ComparerForType(static_cast<VarType>(code)) != nullptr, known) << code;
    }
}

TEST(Comparers, NumbersCompareBySignAndWidthAndNotANumberEqualsEverything) {
    EXPECT_EQ(Compared<std::int16_t>(VarType::Integer, -1, 1), -1);
    EXPECT_EQ(Compared(VarType::Long, INT32_MAX, INT32_MIN), 1);  // a subtraction would overflow
    EXPECT_EQ(Compared<std::int64_t>(VarType::Currency, 0x100000000, 0xFFFFFFFF), 1);
    EXPECT_EQ(Compared(VarType::Single, 1.5F, 1.25F), 1);
    EXPECT_EQ(Compared(VarType::Date, 1.0, 2.0), -1);
    EXPECT_EQ(Compared(VarType::Single, std::nanf(""), 1.0F), 0);
    EXPECT_EQ(Compared(VarType::Double, 1.0, std::nan("")), 0);
}

TEST(Comparers, KeptABooleanComparesWithTheSixBytesBehindIt) {
    struct Boolean {
        std::int16_t value;
        std::int16_t behind[3];
    };
    EXPECT_EQ(Compared(VarType::Boolean, Boolean{0, {0, 0, 0}}, Boolean{-1, {0, 0, 0}}), -1);
    EXPECT_EQ(Compared(VarType::Boolean, Boolean{0, {0, 0, 1}}, Boolean{-1, {0, 0, 0}}), 1);
}

TEST(Comparers, TextsFollowTheModeAndTaggedValuesTheirText) {
    const Text small = u"b", great = u"B";
    EXPECT_EQ(CompareString(&small, &great, &kBinary, 0), 1);
    EXPECT_EQ(CompareString(&small, &great, &kText, 0), 0);
    const std::tuple<Variant, Variant, std::int32_t, std::int32_t> rows[] = {
        {u"_", u"B", 1, -1},
        {10, 9, -1, -1},
        {10, u"10", 0, 0},
        {Ref<Object>(), Ref<Object>(), 0, 0},
    };
    for (const auto& [left, right, binary, text] : rows) {
        EXPECT_EQ(CompareVariant(&left, &right, &kBinary, 0), binary) << left;
        EXPECT_EQ(CompareVariant(&left, &right, &kText, 0), text) << left;
    }
}

TEST(Comparers, ObjectsCompareByWholeAddress) {
    const Ref<Object> a = MakeObject<CountedObject>();
    const Ref<Object> b = MakeObject<CountedObject>();
    EXPECT_EQ(CompareObject(&a, &b, &kBinary, 0), -CompareObject(&b, &a, &kBinary, 0));
    EXPECT_NE(CompareObject(&a, &b, &kBinary, 0), 0);
    EXPECT_EQ(CompareObject(&a, &a, &kBinary, 0), 0);
}

TEST(AddOffset, WrapsInsteadOfRaising) {
    EXPECT_EQ(AddOffset(0xFFFFFFFF, 2), 1u);
    EXPECT_NE(FunctionAddress(CompareString), FunctionAddress(CompareVariant));
}

}  // namespace
}  // namespace zorvane::modZorvane
