#include "runtime/ErrorTable.h"

#include <gtest/gtest.h>

#include "runtime/AddOptions.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

TEST(RaiseFailure, ComposesNumberSourceAndDescriptionWithoutBlanks) {
    const struct {
        const char* what;
        Failure failure;
        std::u16string_view label;
        Variant argument;
        std::int32_t number;
        Text description;
    } rows[] = {
        {"a position", Failure::NoItem, kKeyIndexLabel, 7, -2147193004,
         u"There is no item with the vKeyIndex specified.KeyIndex = 7"},
        {"a key", Failure::KeyPresent, kKeyLabel, u"x", -2147193003,
         u"There is already an item with this vKeyIndex.Key = x"},
        {"an empty key", Failure::Unknown, kKeyLabel, u"", -2147193002, u"Unknown errorKey = "},
        {"an index", Failure::BadPosition, kIndexLabel, 2.5, -2147193001,
         u"Bad Before/After Value in call to AddIndex = 2.5"},
        {"no text form", Failure::NoItem, kKeyLabel, Variant::Null(), -2147193004,
         u"There is no item with the vKeyIndex specified.Key = "},
    };
    for (const auto& row : rows) {
        const auto error = RaisedBy([&] {
            RaiseFailure(row.failure, u"Project.Class", u"::Member", row.label, row.argument);
        });
        ASSERT_TRUE(error) << row.what;
        EXPECT_EQ(error->Number, row.number) << row.what;
        EXPECT_EQ(error->Source, Text(u"Project.Class::Member")) << row.what;
        EXPECT_EQ(error->Description, row.description) << row.what;
    }
}

TEST(QuietCode, KeptAnUnknownFailureReturnsTheCodeOfNoItem) {
    EXPECT_EQ(QuietCode(Failure::KeyPresent), -28501);
    EXPECT_EQ(QuietCode(Failure::BadPosition), -28503);
    EXPECT_EQ(QuietCode(Failure::Unknown), -28500);
}

TEST(PlaceBeforeOrAfter, TheGreatestPositionDoesNotWrap) {
    const auto none = [](const Text&) { return std::optional<std::int32_t>(); };
    const auto place = PlaceBeforeOrAfter({.After = std::int32_t{2147483647}}, 3, none);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->Wrong, Failure::Unknown);
}

}  // namespace
}  // namespace zorvane
