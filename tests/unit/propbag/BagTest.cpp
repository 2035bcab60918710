// What the model run does not compare: equality of values, and arguments that do not fit.

#include "tests/support/Testing.h"
#include "tests/unit/propbag/Words.h"
#include "zorvane/propbag/detail/SameValue.h"

namespace zorvane {
namespace {

TEST(SameValue, KindsAreComparedByValueAndNothingElseIs) {
    const Variant nan = std::numeric_limits<double>::quiet_NaN();
    const auto decimal = [](std::uint64_t low, std::uint8_t scale, std::uint32_t high = 0) {
        return Variant::FromDecimal({.Low = low, .High = high, .Scale = scale});
    };
    const std::tuple<const char*, Variant, Variant, bool> table[] = {
        {"byte and double", std::uint8_t{7}, 7.0, true},
        {"true and -1", true, -1, true},
        {"true and 1", true, 1, false},
        {"false and 400, a weight", std::int16_t{400}, false, false},
        {"inexact single", Variant(0.1F), 0.1, false},
        {"currency beyond 53 bits", Variant::FromCurrency((1LL << 60) + 1),
         Variant::FromCurrency(1LL << 60), false},
        {"decimal with zeros", decimal(1500, 3), Variant::FromCurrency(15000), true},
        {"decimal of 96 bits", decimal(0, 1, 15), decimal(1ull << 63, 0, 1), true},
        {"decimal of 64 bits with a zero", decimal(12345678901234567890ull, 1),
         decimal(1234567890123456789, 0), true},
        {"decimal, other", decimal(1, 1), decimal(1, 0), false},
        {"decimal minus zero", Variant::FromDecimal({.Scale = 2, .Negative = true}), 0, true},
        {"least Long", std::numeric_limits<std::int32_t>::min(),
         Variant::FromDecimal({.Low = 1ull << 31, .Negative = true}), true},
        {"date and its number", Variant::FromDate(2.5), 2.5, true},
        {"not a number", nan, nan, false},
        {"text and number", u"5", 5, false},
    };
    for (const auto& [what, left, right, same] : table) {
        EXPECT_EQ(SameValue(left, right), same) << what;
        EXPECT_EQ(SameValue(right, left), same) << what << ", turned round";
    }
}

TEST(ZVPropertyBag_Late, WhatDoesNotFitIsRefused) {
    ZVPropertyBag bag;
    const auto raised = [&](const char16_t* member, const Variant& argument) {
        return NumberRaisedBy([&] { bag.Call(member, {&argument, 1}); });
    };
    EXPECT_EQ(raised(u"CopyFrom", Ref<Object>()), 91);
    EXPECT_EQ(raised(u"CopyFrom", MakeObject<CountedObject>()), 13) << "no bag";
    EXPECT_EQ(raised(u"Key", u"a"), 13);
    EXPECT_EQ(raised(u"Item", Variant::FromError(-2147352572)), 5) << "left out";
}

}  // namespace
}  // namespace zorvane
