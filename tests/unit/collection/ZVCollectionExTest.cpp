#include "zorvane/collection/ZVCollectionEx.h"

#include "tests/support/ScriptedSource.h"
#include "tests/support/Testing.h"

namespace zorvane {
namespace {

TEST(ZVCollectionEx_Add, AnEmptyKeyIsGeneratedWhereNothingIsSorted) {
    ZVCollectionEx collection;
    collection.SetSorted(false);
    for (int i = 1; i <= 50; ++i) EXPECT_EQ(collection.Add(i, u""), Variant(i));
    for (int i = 1; i <= 50; ++i) EXPECT_EQ(collection.Item(collection.Key(i)), Variant(i));
}

// A source that is no container may answer anything; what it gives is taken or refused whole.
TEST(ZVCollectionEx_CopyFrom, AForeignSourceIsReadDefensively) {
    const std::vector<Variant> settings{true, 0, false, std::int32_t{2147483647}, false, true};
    const struct {
        const char* what;
        Variant count;
        std::vector<Variant> record;
        const char* expected;
    } rows[] = {
        {"a wrong hash code stays", 1, {123, 0, u"item", 4, u"s", u"key"}, "key: 123"},
        {"no hash code is computed", 1, {0, 0, u"item", 4, u"s", u"A"}, "A: 82"},
        {"a negative count is none", -5, {}, "nothing"},
        {"missing cells are empty", 1, {}, ": 17"},
        {"a cell of a wrong type raises", 1, {0, 0, 0, u"four"}, "raised 13 |  | Type mismatch"},
    };
    ScriptedSource odd;
    odd.Cells = {{true, 1, true, 200, u"no Boolean", true}};
    ZVCollectionEx untouched;
    EXPECT_EQ(NumberRaisedBy([&] { untouched.CopyFrom(odd); }), 13);
    EXPECT_FALSE(untouched.Changed() || untouched.Descending()) << "settings come whole or not";
    for (const auto& row : rows) {
        ScriptedSource source;
        source.Cells = {settings, row.record};
        source.CountAnswer = row.count;
        ZVCollectionEx copy;
        copy.Add(1, u"old");
        const std::string got = OutcomeOf([&] {
            copy.CopyFrom(source);
            if (copy.Count() == 0) return Text(u"nothing");
            return copy.Key(1) + Text(u": ") + copy.CopyItemValue(1, 1).ToText();
        });
        EXPECT_EQ(got, row.expected) << row.what;
        EXPECT_EQ(copy.Granularity(), 2147483647) << row.what;
        EXPECT_FALSE(copy.Contains(u"key")) << row.what << ": a foreign hash code decides";
        copy.Add(0, u"B", {.Position = std::size_t{1}});
        if (copy.Count() > 1) copy.Remove(2);
        copy.Add(0, u"C");  // takes the place in memory
        EXPECT_EQ(copy.CopyItemValue(2, 1), Variant(84)) << "a removed record's hash code stayed";
        for (int i = 0; i < 130; ++i) copy.Add(i, Text("new") + std::to_string(i));
        EXPECT_TRUE(copy.Contains(u"new7")) << row.what;
        EXPECT_LE(copy.Capacity(), 40000) << row.what;
        copy.Clear();
        EXPECT_LE(copy.Capacity(), 32768)
            << row.what << ": a copied step must not ask for all memory";
    }
}

// Catches the code of a record that is gone, which comes upon the number of another.
TEST(ZVCollectionEx_CopyFrom, AForeignHashCodeStaysWithItsRecord) {
    ScriptedSource source;
    source.Cells = {{true, 0, false, 128, false, true}};
    for (int i = 1; i <= 3; ++i) {
        source.Cells.push_back({1000 + i, 0, i, i, u"", Text(std::to_string(i))});
    }
    ZVCollectionEx copy;
    copy.CopyFrom(source);
    copy.Remove(2);
    copy.Remove(1);
    copy.SortBy(u"itemlong", true);
    EXPECT_EQ(copy.CopyItemValue(1, 1), Variant(1003));
}

}  // namespace
}  // namespace zorvane
