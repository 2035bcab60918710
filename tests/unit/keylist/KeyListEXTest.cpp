// Beyond what the model run compares.

#include "zorvane/keylist/KeyListEX.h"

#include "tests/support/ScriptedSource.h"
#include "tests/support/Testing.h"

namespace zorvane {
namespace {

// Catches room that is counted in 32 bits: the difference to such a step has no place in them.
TEST(KeyListEX_Remove, ACopiedStepBelowAllNumbersDoesNoHarm) {
    ScriptedSource source;
    source.Cells = {{false, 0, false, INT32_MIN, true, true}};
    for (const char* key : {"a", "b", "c"}) source.Cells.push_back({key, 0, u"", key});
    KeyListEX list;
    list.CopyFrom(source);
    EXPECT_EQ(list.Remove(u"b"), Variant(2));
    EXPECT_EQ(list.Key(1) + list.Key(2), Text(u"ac"));
    EXPECT_EQ(list.Capacity(), 2) << "more than the step stood spare";
}

// Catches a look-up that goes on by hash as the one before it did, although a search tells
// otherwise by now: each change is followed by a kept miss, or by another entry of the same key.
TEST(KeyListEX_Contains, GoesByWhatHoldsNowAndNotByWhatHeldBefore) {
    struct Row {
        const char* change;
        bool sorted;
        void (*Change)(KeyListEX& list);
    };
    const Row kRows[] = {
        {"sorted by word alone", false, [](KeyListEX& list) { list.SetSorted(true); }},
        {"turned round by word alone", true, [](KeyListEX& list) { list.SetDescending(true); }},
        {"sorted by a column that counts as the key", true,
         [](KeyListEX& list) {
             EXPECT_FALSE(list.SortBy(u"itemstring"));
             EXPECT_TRUE(list.Contains(u"c")) << "nothing moved yet";
             EXPECT_TRUE(list.Sort());
         }},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.change);
        KeyListEX list;
        list.SetSorted(row.sorted);
        for (const char* key : {"c", "b", "a"}) list.Add(key, key);
        for (const char* key : {"a", "b", "c"}) list.SetItemString(key, key[0] == 'c' ? "1" : "2");
        EXPECT_TRUE(list.Contains(u"c"));
        row.Change(list);
        EXPECT_FALSE(list.Contains(u"c"));
    }
    KeyListEX list;
    list.SetUnique(false);
    list.Add(u"first", u"b");
    EXPECT_EQ(list.Item(u"b"), Variant(u"first"));
    list.Add(u"second", u"b");
    EXPECT_EQ(list.Item(u"b"), Variant(u"second")) << "in front of its equals";
    list.Clear();
    for (const char* key : {"b", "a"}) list.Add(key, key);
    list.SetItemLong(u"a", 2);
    EXPECT_FALSE(list.SortBy(u"itemlong"));
    EXPECT_TRUE(list.Contains(u"a"));
    EXPECT_TRUE(list.Sort());
    EXPECT_EQ(list.Key(1), Text(u"a")) << "a look-up selects the key";
}

}  // namespace
}  // namespace zorvane
