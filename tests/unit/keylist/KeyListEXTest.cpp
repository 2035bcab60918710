#include "keylist/KeyListEX.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/support/Outcome.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

static_assert(std::is_nothrow_move_constructible_v<KeyListEX> &&
              std::is_nothrow_move_assignable_v<KeyListEX>);

// The keys in position order, with a blank between.
std::string KeysOf(const KeyListEX& list) {
    std::string keys;
    for (std::int32_t i = 1; i <= list.Count(); ++i)
        keys += (i > 1 ? " " : "") + list.Key(i).ToUtf8();
    return keys;
}

KeyListEX Filled(std::initializer_list<const char*> keys, bool sorted = true, bool unique = true) {
    KeyListEX list;
    list.SetSorted(sorted);
    list.SetUnique(unique);
    for (const char* key : keys) list.Add(Variant(key), key);
    return list;
}

TEST(KeyListEX_Add, ARepeatedKeyGoesInFrontOfItsEquals) {
    KeyListEX list = Filled({"a", "b", "c"}, true, false);
    EXPECT_EQ(list.Add(u"second", u"b"), Variant(2));
    EXPECT_EQ(list.Item(2), Variant(u"second"));
    std::int32_t index = 0;
    EXPECT_TRUE(list.Exists(u"b", index));
    EXPECT_EQ(index, 2);
}

TEST(KeyListEX_Key, AFailureNamesThePosition) {
    EXPECT_EQ(OutcomeOf([] { return KeyListEX().Key(3); }),
              "raised -2147193004 | ZorvaneDemoProject.KeyListEX::Key | There is no item with the "
              "vKeyIndex specified.Index = 3");
}

TEST(KeyListEX_Granularity, KeptClearLiftsTheStepTo32) {
    KeyListEX list;
    list.SetGranularity(50000);
    EXPECT_EQ(list.Granularity(), 32768);
    list.SetGranularity(16);
    EXPECT_EQ(list.Granularity(), 16);
    list.Clear();
    EXPECT_EQ(list.Granularity(), 32);
}

TEST(KeyListEX_SortBy, KeptASearchWhileOrderedByItemStringMaySkipAKeyThatIsThere) {
    KeyListEX list = Filled({"a", "b", "c", "d", "e"});
    for (std::int32_t i = 1; i <= 5; ++i) list.SetItemString(i, Text("s") + std::to_string(9 - i));
    EXPECT_FALSE(list.SortBy(u"ItemString", true));
    EXPECT_EQ(KeysOf(list), "e d c b a");
    EXPECT_FALSE(list.Contains(u"a"));
    EXPECT_EQ(KeysOf(list), "e d c b a");
}

TEST(KeyListEX_SetCompare, KeptAssigningTheModeChangesNothing) {
    KeyListEX list;
    list.SetCompare(1);
    EXPECT_EQ(list.Compare(), 0);
}

TEST(KeyListEX_NewEnum, KeptAnEnumerationShowsTheItemsOfItsFirstPass) {
    KeyListEX list = Filled({"a", "b"});
    Enumerator before = list.NewEnum();
    list.SetItem(u"a", u"new");
    Variant item;
    ASSERT_TRUE(list.NewEnum().Next(item));
    EXPECT_EQ(item, Variant(u"a"));
    list.Remove(u"b");
    ASSERT_TRUE(list.NewEnum().Next(item));
    EXPECT_EQ(item, Variant(u"new"));
    ASSERT_TRUE(before.Next(item) && before.Next(item));
    EXPECT_EQ(item, Variant(u"b")) << "an enumerator lost its snapshot";
}

TEST(KeyListEX_CopyFrom, KeptCopyingFromItselfLeavesNothing) {
    KeyListEX list = Filled({"a", "b"});
    list.CopyFrom(list, true);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_TRUE(list.Changed());
}

TEST(KeyListEX_CopyFrom, TheCopyIsInKeyOrderWhateverTheSourceIs) {
    KeyListEX source = Filled({"a", "b", "c"});
    for (std::int32_t i = 1; i <= 3; ++i) source.SetItemLong(i, -i);
    source.SortBy(u"ItemLong", true);
    KeyListEX copy;
    copy.CopyFrom(source);
    EXPECT_EQ(KeysOf(source), "c b a");
    EXPECT_EQ(KeysOf(copy), "a b c");
    EXPECT_EQ(copy.ItemLong(u"c"), -3);
}

TEST(KeyListEX, ArgumentsMayLiveInsideTheList) {
    KeyListEX list = Filled({"b", "a", "d", "c"});
    list.SortBy(u"Item", true);
    list.SetDescending(true);
    list.SortBy(u"ItemLong", true);
    // Each of these re-sorts while it still needs its argument, which lies in a record.
    const Variant first = *list.begin();
    EXPECT_EQ(list.Item(*list.begin()), first);
    list.SortBy(u"ItemLong", true);
    list.SetItem(1, *std::next(list.begin()));
    list.SortBy(u"ItemLong", true);
    const auto missing = RaisedBy([&] {
        list.SetItem(1, u"not a key");
        static_cast<void>(list.Item(*list.begin()));
    });
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->Description,
              Text(u"There is no item with the vKeyIndex specified.KeyIndex = not a key"));
    list.Add(*list.begin(), u"e");
    list.SetItem(2, u"e");
    EXPECT_EQ(list.Remove(*std::next(list.begin())).Type(), VarType::Long);
}

TEST(KeyListEX, LateBoundMembersAnswerAsTheTypedOnes) {
    KeyListEX list = Filled({"a", "b"});
    Object& object = list;
    const struct {
        const char16_t* member;
        std::vector<Variant> arguments;
        Variant gives;
    } rows[] = {
        {u"COUNT", {}, 2},
        {u"Changed", {}, true},
        {u"ClassName", {}, u"ZorvaneDemoProject.KeyListEX"},
        {u"Compare", {}, 0},
        {u"CopyItemValue", {1, 4}, u"a"},
        {u"CopyItemValue", {1, 9}, Variant()},
        {u"CopyItemValue", {0, 9}, Variant()},
        {u"Descending", {}, false},
        {u"Exists", {u"b"}, true},
        {u"Granularity", {}, 32},
        {u"item", {u"a"}, u"a"},
        {u"ItemLong", {u"a"}, 7},
        {u"ItemString", {1}, u"s"},
        {u"Key", {2}, u"b"},
        {u"SortBy", {u"ItemLong", true}, false},
        {u"Sort", {}, true},
        {u"Key", {2}, u"a"},
        {u"Sorted", {}, true},
        {u"Unique", {}, true},
        {u"Remove", {u"a"}, 1},
        {u"Clear", {}, Variant()},
        {u"Count", {}, 0},
    };
    list.SetItemLong(u"a", 7);
    list.SetItemString(u"a", u"s");
    for (const auto& row : rows) {
        EXPECT_EQ(object.Call(row.member, row.arguments), row.gives) << Text(row.member);
    }
    EXPECT_EQ(NumberRaisedBy([&] { object.Get(u"Weight"); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { object.Get(u"Item"); }), 5);
}

}  // namespace
}  // namespace zorvane
