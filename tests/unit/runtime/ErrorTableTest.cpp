#include "runtime/ErrorTable.h"

#include <gtest/gtest.h>

#include "tests/support/Outcome.h"

namespace zorvane {
namespace {

TEST(RaiseFailure, ComposesNumberSourceAndDescriptionWithoutBlanks) {
    const auto with = [](const Variant& argument) {
        return OutcomeOf(
            [&] { RaiseFailure(Failure::BadPosition, u"P.C", u"::M", kIndexLabel, argument); });
    };
    const std::string expected =
        "raised -2147193001 | P.C::M | Bad Before/After Value in call to AddIndex = ";
    EXPECT_EQ(with(2.5), expected + "2.5");
    EXPECT_EQ(with(Variant::Null()), expected) << "a value that has no text";
}

TEST(QuietCode, KeptAnUnknownFailureReturnsTheCodeOfNoItem) {
    EXPECT_EQ(QuietCode(Failure::KeyPresent), -28501);
    EXPECT_EQ(QuietCode(Failure::BadPosition), -28503);
    EXPECT_EQ(QuietCode(Failure::Unknown), -28500);
}

}  // namespace
}  // namespace zorvane
