// A value's end may run code that uses the container it was in: it finds the container whole, and
// comes once, after the operation that let go of it.

#include "tests/unit/zorvane/Containers.h"

namespace zorvane {
namespace {

template <class C>
class Release : public testing::Test {};
TYPED_TEST_SUITE(Release, Containers);

TYPED_TEST(Release, ComesWhenTheContainerIsWholeAgain) {
    using C = TypeParam;
    // Lets `operate` let go of "m", which stood beside "a" and "n" and perhaps the container
    // itself; its end has to see `left` entries without the latter.
    const auto expect = [](const char* what, std::int32_t left, auto operate) {
        const auto c = MakeObject<C>();
        if constexpr (!kPlain<C>) AddTo<C>(*c, c, u"itself");
        const std::int32_t itself = c->Count();
        AddTo(*c, 1, u"a");
        std::int32_t seen = -1;
        AddTo(*c, MakeObject<CountedObject>([&, kept = c.Get()] {
            seen = kept->Count();
            for (int i = 0; i < 40; ++i) AddTo(*kept, i, Text("b") + std::to_string(i));
            EXPECT_EQ(kept->Item(u"b7"), Variant(7)) << what;
        }),
              u"m");
        AddTo(*c, 3, u"n");
        operate(*c);
        EXPECT_EQ(seen, left == 0 ? 0 : left + itself) << what;
        EXPECT_EQ(c->Item(u"b39"), Variant(39)) << what;
        EXPECT_EQ(CountedObject::Alive(), 0) << what;
        if constexpr (!kPlain<C>) c->Clear();
    };
    expect("Remove", 2, [](C& c) { c.Remove(u"m"); });
    if constexpr (!kPlain<C>) {
        expect("Clear", 0, [](C& c) { c.Clear(); });
        expect("assignment", 0, [](C& c) { c = C(); });
    }
    if constexpr (requires(C c) { c.SetItem(1, 1); }) {
        expect("SetItem", 3, [](C& c) { c.SetItem(u"m", 1); });
        expect("CopyFrom", 0, [](C& c) { c.CopyFrom(*MakeObject<C>()); });
    }
    if constexpr (requires(C c) { c.CopyFrom(c); }) {
        expect("CopyFrom itself", 0, [](C& c) { c.CopyFrom(c); });
    }
    if constexpr (std::is_same_v<C, CollectionEx>) {
        expect("Replace", 3, [](C& c) { c.Add(1, u"m", {.Replace = true}); });
        expect("Add drops the snapshot", 3, [](C& c) {
            static_cast<void>(c.NewEnum());
            c.Remove(u"m");
            c.Add(1, u"new");
        });
    }
    if constexpr (std::is_same_v<C, KeyListEX>) {
        const auto keepInSnapshot = [](C& c) {
            static_cast<void>(c.NewEnum());
            c.SetItem(u"m", 1);
        };
        expect("Remove drops the snapshot", 2, [&](C& c) {
            keepInSnapshot(c);
            c.Remove(*c.begin());
        });
        expect("Add drops the snapshot", 4, [&](C& c) {
            keepInSnapshot(c);
            c.Add(1, u"new");
        });
    }
    if constexpr (kBag<C>) {
        expect("write over", 3, [](C& c) { c.WriteProperty(u"m", 5); });
        expect("no object", 3, [](C& c) { c.WriteProperty(u"m", Ref<Object>()); });
        expect("default", 2, [](C& c) { c.WriteProperty(u"m", 5, {.Default = 5}); });
        expect("Contents", 0, [](C& c) { c.SetContents(Variant()); });
        expect("CopyFrom", 0, [](C& c) { c.CopyFrom(C()); });
    }
}

// Catches an end that loses, frees twice or never what a release adds to the dying container.
TYPED_TEST(Release, MayAddAtTheContainersEnd) {
    int calls = 0;
    {
        TypeParam c;
        const auto callingBack = [&](Variant added) {
            return MakeObject<CountedObject>([&, added] {
                ++calls;
                EXPECT_EQ(c.Count(), 0);
                AddTo(c, added, Text("again") + std::to_string(calls));
                EXPECT_EQ(c.Count(), 1);
                if constexpr (std::is_same_v<TypeParam, KeyListEX>) static_cast<void>(c.NewEnum());
            });
        };
        AddTo(c, callingBack(callingBack(7)), u"key");
    }
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

// Catches ends within ends that exhaust the stack, and one that never comes.
TYPED_TEST(Release, OfANestHoweverDeepComesToTheInnermost) {
    Variant nest = MakeObject<CountedObject>();
    for (int depth = 0; depth < 50000; ++depth) {
        const auto around = MakeObject<TypeParam>();
        AddTo(*around, std::exchange(nest, around), u"key");
    }
    nest = Variant();
    EXPECT_EQ(CountedObject::Alive(), 0);
}

}  // namespace
}  // namespace zorvane
