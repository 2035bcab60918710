#pragma once
// A release at a container's end may still use the container, and even add to it.

#include <gtest/gtest.h>

#include "tests/unit/CountedObject.h"

namespace zorvane {

// Catches an end that loses, frees twice or never what a release adds to the dying container.
// add(container, item, key) adds.
template <class Container, class Add>
void ExpectReleasesMayAddAtTheEnd(Add&& add) {
    int calls = 0;
    {
        Container container;
        const auto callingBack = [&](Variant added) {
            return MakeObject<CountedObject>([&, added] {
                ++calls;
                EXPECT_EQ(container.Count(), 0);
                add(container, added, Text("again") + std::to_string(calls));
                EXPECT_EQ(container.Count(), 1);
            });
        };
        add(container, callingBack(callingBack(7)), u"key");
    }
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

}  // namespace zorvane
