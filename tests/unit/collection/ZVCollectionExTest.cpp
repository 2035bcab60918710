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

// A source that is no container may answer anything.
TEST(ZVCollectionEx_CopyFrom, AForeignSourceIsReadDefensively) {
    const std::tuple<const char*, Variant, std::vector<Variant>, const char*> rows[] = {
        {"a wrong hash code stays", 1, {123, 0, u"item", 4, u"s", u"key"}, "key: 123"},
        {"a negative count is none", -5, {}, "nothing"},
        {"missing cells are empty", 1, {}, ": 17"},
        {"a cell of a wrong type raises", 1, {0, 0, 0, u"four"}, "raised 13 |  | Type mismatch"},
    };
    for (const auto& [what, count, record, expected] : rows) {
        ScriptedSource source;
        source.Cells = {{true, 0, false, 200, false, true}, record};
        source.CountAnswer = count;
        ZVCollectionEx copy;
        const std::string got = OutcomeOf([&] {
            copy.CopyFrom(source);
            if (copy.Count() == 0) return Text(u"nothing");
            return copy.Key(1) + Text(u": ") + copy.CopyItemValue(1, 1).ToText();
        });
        EXPECT_EQ(got, expected) << what;
    }
}

}  // namespace
}  // namespace zorvane
