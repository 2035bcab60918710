// What docs/behaviour.md says of all containers at once.

#include "tests/support/AllocationFaults.h"
#include "tests/unit/zorvane/Containers.h"

namespace zorvane {
namespace {

constexpr int kCount = 600;  // more than one block of an order

template <class Container>
void Fill(Container& container, int count = kCount) {
    for (int i = 0; i < count; ++i) AddTo(container, i, KeyOf(i * 7 % kCount));
}

template <class Container>
class Behaviour : public testing::Test {};
TYPED_TEST_SUITE(Behaviour, Containers);

// What needs no memory; and at the end something that does, so that a count that stands still is
// seen.
TYPED_TEST(Behaviour, LookingClearingMovingAndSwappingNeedNoMemory) {
    using C = TypeParam;
    const auto expect = [](bool allocates, const char* what, auto operate) {
        for (const bool sorted : {true, false}) {
            C c;
            if constexpr (requires { c.SetSorted(sorted); }) c.SetSorted(sorted);
            Fill(c);
            const std::int64_t before = AllocationCount();
            operate(c);
            EXPECT_EQ(AllocationCount() != before, allocates) << what;
        }
    };
    const Text key = KeyOf(7);
    const Variant named = key;
    expect(false, "Item by key", [&](C& c) { return c.Item(named); });
    expect(false, "Item by position", [](C& c) { return c.Item(300); });
    if constexpr (requires(C c) { c.FindItem(1); }) {
        expect(false, "FindItem", [&](C& c) {
            EXPECT_EQ(c.FindItem(1), &*c.begin()) << "a copy";
            EXPECT_EQ(c.FindItem(named)->ToLong(), 1);
        });
    }
    if constexpr (kPlain<C> || kBag<C>) {
        expect(false, "Remove by key", [&](C& c) { c.Remove(named); });
        expect(false, "Remove by position", [](C& c) { c.Remove(300); });
    }
    if constexpr (!kPlain<C>) {
        static_assert(std::is_nothrow_move_constructible_v<C>);
        static_assert(std::is_nothrow_move_assignable_v<C>);
        expect(false, "Clear", [](C& c) { c.Clear(); });
        expect(false, "move and swap", [](C& c) {
            C other = std::move(c);
            EXPECT_EQ(c.Count(), 0);  // NOLINT: the state after a move is promised
            swap(other, c);
        });
    }
    if constexpr (requires(C c, std::int32_t i) { c.Exists(key, i); }) {
        std::int32_t index = 0;
        expect(false, "Exists", [&](C& c) { return c.Exists(key, index); });
        expect(false, "Key", [](C& c) { return c.Key(300); });
        expect(false, "Descending", [](C& c) { c.SetDescending(!c.Descending()); });
    }
    if constexpr (requires(const C c) { c.Index(key); }) {
        expect(false, "Index", [&](C& c) { return c.Index(key); });
    }
    if constexpr (kBag<C>) {
        expect(false, "ObjName", [&](C& c) { return c.ObjName(named); });
        expect(false, "PropIsObject", [&](C& c) { return c.PropIsObject(named); });
    }
    expect(true, "what does", [](C& c) { AddTo(c, 1, u"a key of its own"); });
}

// Catches room for the numbers that removals free being made behind the growth that they come from:
// where that failed, a removal long after needed memory that it must not need.
TEST(Behaviour_Removal, NeedsNoMemoryWhateverFailedBefore) {
    bool failed = true;
    for (std::int64_t number = 1; failed || number < 4; ++number) {
        ZVCollectionEx c;
        for (int i = 0; i < 64; ++i) c.Add(i, KeyOf(i));
        c.Remove(5);
        c.Add(64, KeyOf(64), {.Before = 10});  // a full store, in blocks
        const Text key = KeyOf(65);
        FailAllocation(number);
        failed = false;
        try {
            c.Add(65, key);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        FailAllocation(0);
        for (int i = 66; i < 126; ++i) c.Add(i, KeyOf(i));
        while (c.Count() > 1) {
            const Variant middle = c.Count() / 2;
            FailAllocation(1);
            c.Remove(middle);
            ASSERT_FALSE(AllocationHasFailed());
        }
        FailAllocation(0);
    }
}

// Catches growth that fails halfway, or behind the point of no return: of an order by blocks and by
// groups of them, and to a block that asks for its memory another way.
TYPED_TEST(Behaviour, GrowthMayFailAnywhereAndChangesNothing) {
    if (kPlain<TypeParam> || kBag<TypeParam>) return;  // no blocks of their own
    constexpr int kBlocks = 20'000, kMany = 1 << 17;
    TypeParam c;
    for (int i = 0; i <= kMany; ++i) {
        const Text key = KeyOf(i);
        for (std::int64_t number = 1; c.Count() == i; ++number) {
            FailAllocation(i < kBlocks || i == kMany ? number : 0);
            try {
                AddTo(c, i, key);
            } catch (const std::bad_alloc&) {
                ASSERT_EQ(c.Count(), i);
            }
        }
        FailAllocation(0);
    }
    for (const int i : {0, 5, kBlocks, kMany - 1, kMany}) EXPECT_EQ(c.Item(KeyOf(i)), Variant(i));
    if constexpr (std::is_same_v<TypeParam, CollectionEx>) {
        EXPECT_EQ(c.Capacity(), 132'000);
    }
}

// Catches a key or an item that is read after growth has moved the entry in which it lives.
TYPED_TEST(Behaviour, ArgumentsMayLiveInTheContainer) {
    for (const int count : {1, 2, 15, 16, 31, 32, 127, 128, 999, 1000}) {
        TypeParam container;
        AddTo(container, u"text", u"first");
        for (int i = 1; i < count; ++i) AddTo(container, u"text", Text("key") + KeyOf(i));
        AddTo(container, *container.begin(), (*container.begin()).AsText());
        EXPECT_EQ(container.Item(u"text"), Variant(u"text")) << count;
        container.Remove(*container.begin());  // names itself
        EXPECT_EQ(container.Count(), count);
    }
}

// Catches a way for plain integers that raises something else, or nothing.
TYPED_TEST(Behaviour, APlainIntegerNamesAPositionAsATaggedOneDoes) {
    TypeParam container;
    Fill(container, 3);
    for (const std::int32_t position : {INT32_MIN, -1, 0, 1, 3, 4, INT32_MAX}) {
        const std::string plain = OutcomeOf([&] { return container.Item(position); });
        EXPECT_EQ(plain, OutcomeOf([&] { return container.Item(Variant(position)); }));
        EXPECT_EQ(plain.starts_with("raised"), position < 1 || position > 3) << position;
    }
}

TYPED_TEST(Behaviour, ALateCallThatCannotBeIsRefused) {
    TypeParam container;
    if constexpr (requires { TypeParam::ClassName(); }) {
        EXPECT_EQ(container.Call(u"classname"), Variant(TypeParam::ClassName()));
    }
    EXPECT_EQ(NumberRaisedBy([&] { container.Call(u"NoSuch"); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { container.Get(u"NoSuch"); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { container.Set(u"Count", 1); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { container.Call(u"Item"); }), kPlain<TypeParam> ? 438 : 5);
    if constexpr (!kPlain<TypeParam> && !kBag<TypeParam>) {
        const Variant more[] = {1, u"behind the arguments"};
        container.Add(more[0], more[1].AsText());
        EXPECT_EQ(NumberRaisedBy([&] { container.Call(u"Key", {more, 0}); }), 5);
        container.Call(u"Clear");
        IgnoringErrors([&] { container.Call(u"Add", {more, 1}); });
        EXPECT_EQ(container.Count(), 0);
    }
}

}  // namespace
}  // namespace zorvane
