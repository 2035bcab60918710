// What docs/behaviour.md says of all containers at once.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

#include "collection/ZVCollectionEx.h"
#include "keylist/CollectionEx.h"
#include "keylist/KeyListEX.h"
#include "platform/Collection.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/support/AllocationFaults.h"

namespace zorvane {
namespace {

constexpr int kCount = 600;  // more than one block of an order

Text KeyOf(int number) {
    return Text("key") + Text(std::to_string(number));
}

template <class Container>
void Fill(Container& container) {
    for (int i = 0; i < kCount; ++i) {
        const Text key = KeyOf(i * 7 % kCount);
        if constexpr (std::is_same_v<Container, Collection>) {
            container.Add(i, {.Key = key});
        } else {
            container.Add(i, key);
        }
    }
}

// What needs no memory; and at the end something that does, so that a count that stands still is
// seen.
template <class Container>
class Behaviour_NeedsNoMemory : public testing::Test {
  protected:
    template <class Operation>
    void Try(const char* what, Operation&& operate, bool allocates = false) {
        for (const bool sorted : {true, false}) {
            Container container;
            if constexpr (requires { container.SetSorted(sorted); }) container.SetSorted(sorted);
            Fill(container);
            const std::int64_t before = AllocationCount();
            operate(container);
            EXPECT_EQ(AllocationCount() != before, allocates) << what;
        }
    }
};
using Containers =
    testing::Types<Collection, CollectionEx, KeyListEX, ZVCollectionEx, ZVPropertyBag>;
TYPED_TEST_SUITE(Behaviour_NeedsNoMemory, Containers);

TYPED_TEST(Behaviour_NeedsNoMemory, LookingClearingMovingAndSwapping) {
    using C = TypeParam;
    constexpr bool kHashed = std::is_same_v<C, ZVCollectionEx>;
    constexpr bool kPlain = std::is_same_v<C, Collection>;
    const Variant key = KeyOf(5);
    this->Try("Item by key", [&](C& c) { static_cast<void>(c.Item(key)); });
    this->Try("Item by position", [](C& c) { static_cast<void>(c.Item(300)); });
    if constexpr (kPlain || std::is_same_v<C, ZVPropertyBag>) {
        this->Try("Remove by key", [&](C& c) { c.Remove(key); });
        this->Try("Remove by position", [](C& c) { c.Remove(300); });
    }
    if constexpr (!kPlain) {
        this->Try("Clear", [](C& c) { c.Clear(); });
        this->Try("move and swap", [](C& c) {
            C other = std::move(c);
            swap(other, c);
        });
    }
    if constexpr (requires(C c, std::int32_t i) { c.Exists(key, i); }) {
        std::int32_t index = 0;
        this->Try("Exists", [&](C& c) { static_cast<void>(c.Exists(key.AsText(), index)); });
        this->Try("Key", [](C& c) { static_cast<void>(c.Key(300)); });
        this->Try("Granularity", [](C& c) { c.SetDescending(!c.Descending()); });
    }
    if constexpr (requires(const C c) { c.Index(Text()); }) {
        this->Try("Index", [&](C& c) { static_cast<void>(c.Index(key.AsText())); });
    }
    if constexpr (requires(const C c) { c.PropIsObject(key); }) {
        this->Try("ObjName", [&](C& c) { static_cast<void>(c.ObjName(key)); });
        this->Try("PropIsObject", [&](C& c) { static_cast<void>(c.PropIsObject(key)); });
    }
    this->Try(
        "what does",
        [](C& c) {
            if constexpr (kPlain) {
                c.Add(1);
            } else if constexpr (kHashed) {
                static_cast<void>(c.CopyItemValue(1, 2));
            } else {
                static_cast<void>(c.NewEnum());
            }
        },
        true);
}

}  // namespace
}  // namespace zorvane
