// What docs/behaviour.md says of all containers at once.

#include <gtest/gtest.h>

#include <cstddef>
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

template <class Container>
struct Row {
    const char* what;
    void (*operate)(Container&, const Variant& key);
    bool allocates = false;
};

template <class Container, std::size_t kRows>
void ExpectAllocations(const Row<Container> (&rows)[kRows], void (*prepare)(Container&)) {
    const Variant key = KeyOf(5);
    for (const auto& row : rows) {
        Container container;
        prepare(container);
        Fill(container);
        const std::int64_t before = AllocationCount();
        row.operate(container, key);
        EXPECT_EQ(AllocationCount() != before, row.allocates) << row.what;
    }
}

// Each table ends with an operation that does allocate, so that a count that stands still is seen.

TEST(Behaviour_NeedsNoMemory, KeyListEX) {
    using C = KeyListEX;
    const Row<C> rows[] = {
        {"Clear", [](C& c, const Variant&) { c.Clear(); }},
        {"Item by key", [](C& c, const Variant& key) { static_cast<void>(c.Item(key)); }},
        {"Item by position", [](C& c, const Variant&) { static_cast<void>(c.Item(300)); }},
        {"Key", [](C& c, const Variant&) { static_cast<void>(c.Key(300)); }},
        {"CopyItemValue", [](C& c, const Variant&) { static_cast<void>(c.CopyItemValue(9, 1)); }},
        {"settings",
         [](C& c, const Variant&) {
             c.SetGranularity(99);
             c.SetDescending(!c.Descending());
         }},
        {"move and swap",
         [](C& c, const Variant&) {
             C other = std::move(c);
             swap(other, c);
         }},
        {"NewEnum", [](C& c, const Variant&) { static_cast<void>(c.NewEnum()); }, true},
    };
    ExpectAllocations<C>(rows, [](C& c) { c.SetSorted(true); });
    ExpectAllocations<C>(rows, [](C& c) { c.SetSorted(false); });
}

TEST(Behaviour_NeedsNoMemory, ZVCollectionEx) {
    using C = ZVCollectionEx;
    const Row<C> rows[] = {
        {"Clear", [](C& c, const Variant&) { c.Clear(); }},
        {"Contains", [](C& c, const Variant& key) { static_cast<void>(c.Contains(key)); }},
        {"Exists",
         [](C& c, const Variant& key) {
             std::int32_t index = 0;
             static_cast<void>(c.Exists(key, index));
         }},
        {"Key", [](C& c, const Variant&) { static_cast<void>(c.Key(300)); }},
        {"move and swap",
         [](C& c, const Variant&) {
             C other = std::move(c);
             swap(other, c);
         }},
        {"HashIndex", [](C& c, const Variant&) { static_cast<void>(c.CopyItemValue(1, 2)); }, true},
    };
    ExpectAllocations<C>(rows, [](C& c) { c.SetSorted(true); });
    ExpectAllocations<C>(rows, [](C& c) { c.SetSorted(false); });
}

TEST(Behaviour_NeedsNoMemory, CollectionEx) {
    using C = CollectionEx;
    const Row<C> rows[] = {
        {"Clear", [](C& c, const Variant&) { c.Clear(); }},
        {"Item by key", [](C& c, const Variant& key) { static_cast<void>(c.Item(key)); }},
        {"Item by position", [](C& c, const Variant&) { static_cast<void>(c.Item(300)); }},
        {"Exists", [](C& c, const Variant& key) { static_cast<void>(c.Exists(key)); }},
        {"Index", [](C& c, const Variant& key) { static_cast<void>(c.Index(key.AsText())); }},
        {"move and swap",
         [](C& c, const Variant&) {
             C other = std::move(c);
             swap(other, c);
         }},
        {"NewEnum", [](C& c, const Variant&) { static_cast<void>(c.NewEnum()); }, true},
    };
    ExpectAllocations<C>(rows, [](C& c) { c.SetSorted(true); });
    ExpectAllocations<C>(rows, [](C& c) { c.SetSorted(false); });
}

TEST(Behaviour_NeedsNoMemory, Collection) {
    using C = Collection;
    const Row<C> rows[] = {
        {"Item", [](C& c, const Variant& key) { static_cast<void>(c.Item(key)); }},
        {"Remove by key", [](C& c, const Variant& key) { c.Remove(key); }},
        {"Remove by position", [](C& c, const Variant&) { c.Remove(300); }},
        {"Add", [](C& c, const Variant&) { c.Add(1); }, true},
    };
    ExpectAllocations<C>(rows, [](C&) {});
}

TEST(Behaviour_NeedsNoMemory, ZVPropertyBag) {
    using C = ZVPropertyBag;
    const Row<C> rows[] = {
        {"Clear", [](C& c, const Variant&) { c.Clear(); }},
        {"Item", [](C& c, const Variant& key) { static_cast<void>(c.Item(key)); }},
        {"ObjName", [](C& c, const Variant& key) { static_cast<void>(c.ObjName(key)); }},
        {"Key", [](C& c, const Variant&) { static_cast<void>(c.Key(300)); }},
        {"PropIsObject", [](C& c, const Variant& key) { static_cast<void>(c.PropIsObject(key)); }},
        {"CopyItemValue",
         [](C& c, const Variant& key) {
             Variant value;
             c.CopyItemValue(key, value);
         }},
        {"Remove", [](C& c, const Variant& key) { c.Remove(key); }},
        {"move and swap",
         [](C& c, const Variant&) {
             C other = std::move(c);
             swap(other, c);
         }},
        {"Contents", [](C& c, const Variant&) { static_cast<void>(c.Contents()); }, true},
    };
    ExpectAllocations<C>(rows, [](C&) {});
}

}  // namespace
}  // namespace zorvane
