#include "platform/Collection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>

#include "platform/CaseMapping.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

std::string ItemsOf(const Collection& collection) {
    std::string all;
    for (const Variant& item : collection) all += item.ToText().ToUtf8() + " ";
    return all;
}

Ref<Collection> Abc() {
    const auto collection = MakeObject<Collection>();
    collection->Add("a", {.Key = u"A"});
    collection->Add("b", {.Key = u"B"});
    collection->Add("c", {.Key = u"C"});
    return collection;
}

TEST(Collection_Add, PutsTheItemBeforeOrAfterAnEntryOrSaysWhyNot) {
    const struct {
        const char* what;
        CollectionAdd options;
        std::int32_t error;
        const char* items;
    } rows[] = {
        {"at the end", {}, 0, "a b c x "},
        {"before a position", {.Before = 1}, 0, "x a b c "},
        {"before a key, in another case", {.Before = u"b"}, 0, "a x b c "},
        {"after the last position", {.After = 3}, 0, "a b c x "},
        {"after a key", {.After = u"A"}, 0, "a x b c "},
        {"a position of another type", {.Before = 2.5}, 0, "a x b c "},
        {"a text is a key, not a number", {.Before = u"2"}, 5, "a b c "},
        {"both", {.Before = 1, .After = 1}, 5, "a b c "},
        {"no such key", {.After = u"z"}, 5, "a b c "},
        {"position 0", {.Before = 0}, 9, "a b c "},
        {"position past the end", {.Before = 4}, 9, "a b c "},
        {"a position that is none", {.Before = Variant::Null()}, 13, "a b c "},
        {"a key in use", {.Key = u"b"}, 457, "a b c "},
        {"an empty key", {.Key = Text()}, 0, "a b c x "},
    };
    for (const auto& row : rows) {
        const auto collection = Abc();
        EXPECT_EQ(NumberRaisedBy([&] { collection->Add("x", row.options); }), row.error)
            << row.what;
        EXPECT_EQ(ItemsOf(*collection), row.items) << row.what;
        EXPECT_EQ(collection->Item(u"c"), Variant("c")) << row.what;
        if (row.options.Key && row.error == 0) {
            EXPECT_EQ(NumberRaisedBy([&] { collection->Add("y", row.options); }), 457) << row.what;
        }
    }
}

TEST(Collection_Item, ATextIsAKeyAndAnythingElseAPosition) {
    const auto collection = Abc();
    EXPECT_EQ(collection->Item(std::int16_t{2}), Variant("b"));
    EXPECT_EQ(collection->Item(2.5), Variant("b"));
    EXPECT_EQ(collection->Item(u"b"), Variant("b"));
    for (const Variant& index : {Variant(0), Variant(4), Variant(-1)}) {
        EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection->Item(index)); }), 9);
        EXPECT_EQ(NumberRaisedBy([&] { collection->Remove(index); }), 9);
    }
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection->Item(u"cccc")); }), 5);
    EXPECT_EQ(NumberRaisedBy([&] { collection->Remove(u"cccc"); }), 5);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection->Item(1e10)); }), 6);
    EXPECT_EQ(collection->Count(), 3);
}

TEST(Collection_LateBound, ReachesEveryMemberByName) {
    const Ref<Object> collection = Abc();
    const Variant added[] = {Variant("x"), Variant(u"X"), Variant(1)};
    collection->Call(u"add", added);
    EXPECT_EQ(collection->Get(u"COUNT"), Variant(4));
    const Variant one[] = {Variant(1)};
    EXPECT_EQ(collection->Get(u"Item", one), Variant("x"));
    collection->Call(u"Remove", one);
    EXPECT_EQ(collection->Call(u"Item", one), Variant("a"));
    EXPECT_EQ(NumberRaisedBy([&] { collection->Call(u"Clear"); }), 438);
}

TEST(Collection_Remove, ReleasesTheItemOnceAndAfterEverythingStands) {
    Collection collection;
    std::int32_t seen = -1;
    collection.Add(MakeObject<CountedObject>([&] {
                       seen = collection.Count();
                       collection.Add("from the release", {.Key = u"key"});
                   }),
                   {.Key = u"key"});
    collection.Add("kept");
    collection.Remove(u"KEY");
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(ItemsOf(collection), "kept from the release ");
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Collection_End, LetsAReleaseLookIntoTheDyingCollection) {
    std::int32_t seen = -1;
    {
        Collection collection;
        collection.Add(MakeObject<CountedObject>([&] {
                           seen = collection.Count();
                           EXPECT_EQ(NumberRaisedBy([&] { collection.Remove(u"key"); }), 5);
                       }),
                       {.Key = u"key"});
    }
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Collection_Enumeration, GoesOnOverRemovalsWithoutLeavingTheItems) {
    const auto collection = Abc();
    int visited = 0;
    for (auto at = collection->begin(); at != collection->end(); ++at) {
        ++visited;
        collection->Remove(1);
    }
    EXPECT_EQ(visited, 2);
}

// A plain list with linear search goes through the same operations.
TEST(Collection_Model, AgreesWithAPlainListOverRandomOperations) {
    struct Entry {
        int item;
        Text key;
    };
    std::mt19937 random(20260301);
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    Collection collection;
    std::vector<Entry> model;
    const auto find = [&](const Text& key) {
        return std::find_if(model.begin(), model.end(), [&](const Entry& entry) {
            return EqualTexts(entry.key, key, CompareMode::Text);
        });
    };
    for (int step = 0; step < 30000; ++step) {
        const Text key(std::u16string(1 + below(2), static_cast<char16_t>(u'A' + below(40))));
        const auto found = find(key);
        const std::size_t kind = below(10);
        if (kind < 5 && model.size() < 60) {
            const std::size_t at = below(model.size() + 1);
            CollectionAdd options{.Key = key};
            if (at < model.size()) options.Before = static_cast<std::int32_t>(at + 1);
            const std::int32_t error =
                NumberRaisedBy([&] { collection.Add(step, std::move(options)); });
            ASSERT_EQ(error, found == model.end() ? 0 : 457);
            if (error == 0)
                model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), {step, key});
        } else if (kind < 7) {
            const std::int32_t error = NumberRaisedBy([&] { collection.Remove(key); });
            ASSERT_EQ(error, found == model.end() ? 5 : 0);
            if (error == 0) model.erase(found);
        } else if (kind < 8 && !model.empty()) {
            const std::size_t at = below(model.size());
            collection.Remove(static_cast<std::int32_t>(at + 1));
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
        } else if (found != model.end()) {
            ASSERT_EQ(collection.Item(key), Variant(found->item));
        }
        ASSERT_EQ(collection.Count(), static_cast<std::int32_t>(model.size()));
        ASSERT_TRUE(std::equal(
            collection.begin(), collection.end(), model.begin(), model.end(),
            [](const Variant& item, const Entry& entry) { return item == Variant(entry.item); }))
            << "step " << step;
    }
}

}  // namespace
}  // namespace zorvane
