// The store: look-up, adding, removing, settings, errors, defaults that suppress and remove.

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "platform/Classes.h"
#include "propbag/SameValue.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"
#include "tests/unit/propbag/Words.h"

namespace zorvane {
namespace {

constexpr const char* kClass = "ZorvaneDemoProject.ZVPropertyBag";
constexpr std::int32_t kNoItem = -2147193004;
constexpr std::int32_t kKeyPresent = -2147193003;

// "name=value" of every entry, in order.
std::string Shown(const ZVPropertyBag& bag) {
    std::string shown;
    for (std::int32_t i = 1; i <= bag.Count(); ++i) {
        shown += (i == 1 ? "" : " ") + bag.Key(i).ToUtf8() + "=" + bag.Item(i).ToText().ToUtf8();
    }
    return shown;
}

ZVPropertyBag BagOf(std::initializer_list<std::pair<const char16_t*, std::int32_t>> entries) {
    ZVPropertyBag bag;
    for (const auto& [name, value] : entries) bag.WriteProperty(name, value);
    bag.SetChanged(false);
    return bag;
}

ZVPropertyBag Unsorted() {
    ZVPropertyBag bag;
    bag.WriteProperty(u"c", 1, {.Index = 1});
    bag.WriteProperty(u"a", 2, {.Index = 2});
    bag.WriteProperty(u"b", 3, {.Index = 99});
    return bag;
}

TEST(ZVPropertyBag_Write, NamesAreKeptInOrderAndFoundWithoutRegardToCase) {
    ZVPropertyBag bag = BagOf({{u"Top", 1}, {u"left", 2}, {u"_x", 3}, {u"\u00C4", 4}, {u"", 5}});
    EXPECT_EQ(Shown(bag), "=5 _x=3 left=2 Top=1 Ä=4");
    bag.WriteProperty(u"TOP", 9);
    bag.WriteProperty(u"\u00E4", 8);
    EXPECT_EQ(Shown(bag), "=5 _x=3 left=2 Top=9 Ä=8");
    EXPECT_EQ(bag.ReadProperty(u"LEFT"), Variant(2));
    EXPECT_EQ(bag.Item(std::int16_t{3}), bag.Item(u"Left"));
}

TEST(ZVPropertyBag_Write, EveryNameIsFoundAndEveryOtherIsMissed) {
    for (int size = 0; size < 40; ++size) {
        ZVPropertyBag bag;
        for (int i = 0; i < size; ++i) {
            // Odd names only, in an order that is neither rising nor falling.
            const int odd = (i * 41 % size) * 2 + 1;
            bag.WriteProperty("n" + std::to_string(100 + odd), odd);
        }
        for (int i = 0; i <= 2 * size; ++i) {
            const Variant found = bag.ReadProperty("N" + std::to_string(100 + i), {.Default = -1});
            EXPECT_EQ(found, Variant(size > 0 && i % 2 == 1 ? i : -1)) << size << " " << i;
        }
    }
}

TEST(ZVPropertyBag_Write, AValueThatEqualsItsDefaultIsNotStoredAndRemovesAnOlderOne) {
    ZVPropertyBag bag = BagOf({{u"Top", 1}});
    bag.WriteProperty(u"Left", 100, {.Default = 100});
    EXPECT_EQ(Shown(bag), "Top=1");
    EXPECT_FALSE(bag.Changed());
    bag.WriteProperty(u"Top", 7, {.Default = 7});
    EXPECT_EQ(bag.Count(), 0);
    EXPECT_TRUE(bag.Changed());
    bag.WriteProperty(u"Top", Variant(), {.Default = Variant()});
    EXPECT_EQ(bag.Count(), 0);
    bag.WriteProperty(u"Top", Variant());  // no Default is not the Default Empty
    EXPECT_EQ(bag.Count(), 1);
}

TEST(SameValue, KindsAreComparedByValueAndNothingElseIs) {
    const Array array = Array::OfWords(Words{1, 2, 3});
    const Variant object = MakeObject<CountedObject>();
    const Variant nan = std::numeric_limits<double>::quiet_NaN();
    const auto decimal = [](std::uint64_t low, std::uint8_t scale, std::uint32_t high = 0) {
        return Variant::FromDecimal({.Low = low, .High = high, .Scale = scale});
    };
    const struct {
        const char* what;
        Variant left;
        Variant right;
        bool same;
    } table[] = {
        {"widths", std::int16_t{100}, 100, true},
        {"byte and double", std::uint8_t{7}, 7.0, true},
        {"true and -1", true, -1, true},
        {"true and 1", true, 1, false},
        {"false and 0", false, 0, true},
        {"false and 400, a weight", std::int16_t{400}, false, false},
        {"exact single", Variant(8.25F), 8.25, true},
        {"inexact single", Variant(0.1F), 0.1, false},
        {"currency", Variant::FromCurrency(15000), 1.5, true},
        {"currency beyond 53 bits", Variant::FromCurrency((1LL << 60) + 1),
         Variant::FromCurrency(1LL << 60), false},
        {"decimal with zeros", decimal(1500, 3), Variant::FromCurrency(15000), true},
        {"decimal of 96 bits", decimal(0, 1, 10), decimal(0, 0, 1), true},
        {"decimal, other", decimal(1, 1), decimal(1, 0), false},
        {"decimal minus zero", Variant::FromDecimal({.Scale = 2, .Negative = true}), 0, true},
        {"least Long", std::numeric_limits<std::int32_t>::min(),
         Variant::FromDecimal({.Low = 1ull << 31, .Negative = true}), true},
        {"date and its number", Variant::FromDate(2.5), 2.5, true},
        {"not a number", nan, nan, false},
        {"same text", u"Hi", u"Hi", true},
        {"case", u"Hi", u"hi", false},
        {"text and number", u"5", 5, false},
        {"empty text and Empty", u"", Variant(), false},
        {"Empty and 0", Variant(), 0, false},
        {"Empty and Empty", Variant(), Variant(), true},
        {"Null and Null", Variant::Null(), Variant::Null(), false},
        {"error codes", Variant::FromError(5), Variant::FromError(5), true},
        {"error code and number", Variant::FromError(5), 5, false},
        {"arrays", array, array, false},
        {"an object as default", 5, object, false},
        {"objects", object, object, false},
    };
    for (const auto& row : table) {
        EXPECT_EQ(SameValue(row.left, row.right), row.same) << row.what;
        EXPECT_EQ(SameValue(row.right, row.left), row.same) << row.what << ", turned round";
    }
}

TEST(ZVPropertyBag_Write, ArraysAreStoredWhateverTheDefault) {
    ZVPropertyBag bag;
    const Array array = Array::OfWords(Words{1, 2, 3});
    bag.WriteProperty(u"A", array, {.Default = array});
    EXPECT_EQ(bag.ReadProperty(u"A"), Variant(array));
}

TEST(ZVPropertyBag_Write, KeptWritingByPositionEndsNamesForGood) {
    ZVPropertyBag bag = BagOf({{u"b", 1}, {u"d", 2}});
    bag.WriteProperty(u"a", 3, {.Index = 2});
    EXPECT_EQ(Shown(bag), "b=1 d=3");  // the entry keeps its name
    EXPECT_FALSE(bag.Sorted());
    bag.WriteProperty(u"b", 9);
    EXPECT_EQ(Shown(bag), "b=1 d=3");
    EXPECT_EQ(bag.ReadProperty(u"b", {.Default = u"default"}), Variant(u"default"));
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(bag.Item(u"b")); }), kNoItem);
    bag.WriteProperty(u"b", 4, {.Index = 7});  // behind the end: appended, names may repeat
    EXPECT_EQ(Shown(bag), "b=1 d=3 b=4");
    EXPECT_EQ(bag.ReadProperty(u"no name", {.Index = 3}), Variant(4));
    EXPECT_EQ(bag.ReadProperty(u"b", {.Default = 5, .Index = 4}), Variant(5));
    bag.WriteProperty(u"x", 0, {.Default = 0, .Index = 1});
    EXPECT_EQ(Shown(bag), "d=3 b=4");
    bag.Clear();
    EXPECT_TRUE(bag.Sorted());
}

TEST(ZVPropertyBag_Write, KeptADefaultThatSuppressesStillEndsSorted) {
    ZVPropertyBag bag;
    bag.WriteProperty(u"a", 0, {.Default = 0, .Index = 1});
    EXPECT_EQ(bag.Count(), 0);
    EXPECT_FALSE(bag.Sorted());
}

TEST(ZVPropertyBag_Read, AnIndexBehindTheEndFallsBackToTheNameWhileSorted) {
    const ZVPropertyBag bag = BagOf({{u"a", 1}, {u"b", 2}});
    EXPECT_EQ(bag.ReadProperty(u"b", {.Index = 1}), Variant(1));
    EXPECT_EQ(bag.ReadProperty(u"b", {.Index = 3}), Variant(2));
    EXPECT_EQ(bag.ReadProperty(u"b", {.Index = -1}), Variant(2));
    EXPECT_EQ(bag.ReadProperty(u"c"), Variant());
}

TEST(ZVPropertyBag_Read, AnUnsortedFlagOutOfTheWordsMakesTheBagNameless) {
    ZVPropertyBag bag;
    bag.SetContents(Unsorted().Contents());
    EXPECT_FALSE(bag.Sorted());
    EXPECT_EQ(Shown(bag), "c=1 a=2 b=3");
    EXPECT_EQ(bag.ReadProperty(u"a", {.Default = 7}), Variant(7));
}

TEST(ZVPropertyBag_Read, OfRepeatedNamesTheFirstIsFound) {
    ZVPropertyBag source = Unsorted();
    for (int i = 0; i < 5; ++i) source.WriteProperty(u"c", 10 + i, {.Index = 9});
    // Sorted, but not unique: only words can say so. Make the names a, b, c, c, c, c, c, c.
    ZVPropertyBag ordered;
    for (const std::int32_t from : {2, 3, 1, 4, 5, 6, 7, 8}) {
        ordered.WriteProperty(source.Key(from), source.Item(from), {.Index = 99});
    }
    Words words = WordsOf(ordered);
    words[words.size() - 4] = -1;
    ZVPropertyBag bag;
    bag.SetContents(Array::OfWords(words));
    ASSERT_TRUE(bag.Sorted());
    EXPECT_EQ(bag.ReadProperty(u"C"), Variant(1));
    bag.Remove(u"c");
    EXPECT_EQ(bag.ReadProperty(u"C"), Variant(10));
    EXPECT_EQ(bag.Add(77, u"c"), Variant(3));  // in front of its equals
}

TEST(ZVPropertyBag_Add, ThePlaceFollowsFromTheNameOrFromWhatIsAskedFor) {
    ZVPropertyBag sorted = BagOf({{u"b", 1}, {u"d", 2}});
    EXPECT_EQ(sorted.Add(3, u"c", {.Before = 1}), Variant(2));
    EXPECT_EQ(sorted.Add(4, u"a", {.Position = 3}), Variant(1));
    EXPECT_EQ(Shown(sorted), "a=4 b=1 c=3 d=2");
    EXPECT_TRUE(sorted.Changed());

    const struct {
        const char* what;
        AddOptions options;
        const char* shown;
    } table[] = {
        {"nothing", {}, "c=1 a=2 b=3 n=0"},
        {"Before", {.Before = 1}, "n=0 c=1 a=2 b=3"},
        {"Before, 16 bits", {.Before = std::int16_t{2}}, "c=1 n=0 a=2 b=3"},
        {"Before the end", {.Before = 4}, "c=1 a=2 b=3 n=0"},
        {"After", {.After = 1}, "c=1 n=0 a=2 b=3"},
        {"After nothing", {.After = 0}, "n=0 c=1 a=2 b=3"},
        {"both", {.Before = 3, .After = 1}, "c=1 a=2 n=0 b=3"},
        {"Position", {.Position = 2}, "c=1 n=0 a=2 b=3"},
        {"Position behind", {.Position = 5}, "c=1 a=2 b=3 n=0"},
        {"Position below", {.Position = -1}, "c=1 a=2 b=3 n=0"},
    };
    for (const auto& row : table) {
        ZVPropertyBag bag = Unsorted();
        bag.Add(0, u"n", row.options);
        EXPECT_EQ(Shown(bag), row.shown) << row.what;
    }
}

TEST(ZVPropertyBag_Add, FailuresAreCodesUnlessReturnItemRaisesThem) {
    const struct {
        const char* what;
        AddOptions options;
        std::int16_t code;
        const char* source;
        const char* description;
    } table[] = {
        {"name in use",
         {},
         -28501,
         "::Key",
         "There is already an item with this vKeyIndex.Key = B"},
        {"no such neighbour",
         {.Before = u"zz"},
         -28500,
         "::Item",
         "There is no item with the vKeyIndex specified.KeyIndex = zz"},
        {"neighbour out of range",
         {.After = 2147483647},
         -28500,
         "::Item",
         "There is no item with the vKeyIndex specified.KeyIndex = 2147483647"},
        {"neighbour of another type",
         {.Before = 1.5},
         -28500,
         "::Item",
         "There is no item with the vKeyIndex specified.KeyIndex = 1.5"},
    };
    for (const auto& row : table) {
        const bool neighbour = row.options.Before || row.options.After;
        ZVPropertyBag bag = neighbour ? Unsorted() : BagOf({{u"b", 1}});
        const std::string before = Shown(bag);
        bag.SetChanged(false);
        EXPECT_EQ(bag.Add(5, u"B", row.options), Variant(row.code)) << row.what;
        AddOptions raising = row.options;
        raising.ReturnItem = true;
        const auto error = RaisedBy([&] { bag.Add(5, u"B", raising); });
        ASSERT_TRUE(error) << row.what;
        EXPECT_EQ(error->Number, row.code == -28501 ? kKeyPresent : kNoItem) << row.what;
        EXPECT_EQ(error->Source, Text(kClass) + row.source) << row.what;
        EXPECT_EQ(error->Description, row.description) << row.what;
        EXPECT_EQ(Shown(bag), before) << row.what;
        EXPECT_FALSE(bag.Changed()) << row.what;
    }
}

TEST(ZVPropertyBag_Add, KeptReturnItemGivesThePositionAllTheSame) {
    ZVPropertyBag bag;
    EXPECT_EQ(bag.Add(u"item", u"name", {.ReturnItem = true}), Variant(1));
}

TEST(ZVPropertyBag_Errors, EachNamesItsMemberAndItsArgument) {
    ZVPropertyBag bag = BagOf({{u"a", 1}, {u"b", 2}});
    const std::string no = "There is no item with the vKeyIndex specified.";
    const struct {
        const char* what;
        std::function<void()> run;
        const char* source;
        std::string description;
    } table[] = {
        {"Item", [&] { static_cast<void>(bag.Item(u"x")); }, "::Item", no + "KeyIndex = x"},
        {"Item 0", [&] { static_cast<void>(bag.Item(0)); }, "::Item", no + "KeyIndex = 0"},
        {"Item 3", [&] { static_cast<void>(bag.Item(std::int16_t{3})); }, "::Item",
         no + "KeyIndex = 3"},
        {"Item Double", [&] { static_cast<void>(bag.Item(1.0)); }, "::Item", no + "KeyIndex = 1"},
        {"Item Null", [&] { static_cast<void>(bag.Item(Variant::Null())); }, "::Item",
         no + "KeyIndex = "},
        {"ItemFn", [&] { static_cast<void>(bag.ItemFn(u"x")); }, "::Item", no + "KeyIndex = x"},
        {"Key", [&] { static_cast<void>(bag.Key(3)); }, "::Key", no + "Index = 3"},
        {"Key 0", [&] { static_cast<void>(bag.Key(0)); }, "::Key", no + "Index = 0"},
        {"ObjName", [&] { static_cast<void>(bag.ObjName(-1)); }, "::ObjName", no + "KeyIndex = -1"},
        {"Remove", [&] { bag.Remove(u"x"); }, "::Remove", no + "Key = x"},
        {"Remove 3", [&] { bag.Remove(3); }, "::Remove", no + "Key = 3"},
    };
    for (const auto& row : table) {
        const auto error = RaisedBy(row.run);
        ASSERT_TRUE(error) << row.what;
        EXPECT_EQ(error->Number, kNoItem) << row.what;
        EXPECT_EQ(error->Source, Text(kClass) + row.source) << row.what;
        EXPECT_EQ(error->Description, Text(row.description)) << row.what;
    }
    EXPECT_EQ(bag.Count(), 2);
    EXPECT_FALSE(bag.Changed());
}

TEST(ZVPropertyBag_Lookup, QuietOnesNeverRaise) {
    ZVPropertyBag bag = BagOf({{u"a", 1}});
    Variant value = u"untouched";
    EXPECT_FALSE(bag.ItemFn(u"x", value));
    EXPECT_FALSE(bag.ItemFn(2, value));
    EXPECT_EQ(value, Variant(u"untouched"));
    EXPECT_TRUE(bag.ItemFn(u"A", value));
    EXPECT_EQ(value, Variant(1));
    bag.CopyItemValue(9, value);
    EXPECT_EQ(value, Variant());
    bag.CopyItemValue(1, value);
    EXPECT_EQ(value, Variant(1));
    for (const Variant& none : {Variant(u"x"), Variant(0), Variant(2), Variant(1.0), Variant()}) {
        EXPECT_FALSE(bag.PropIsObject(none)) << none;
    }
    EXPECT_FALSE(bag.PropIsObject(1));
    EXPECT_FALSE(ZVPropertyBag().PropIsObject(1));
}

TEST(ZVPropertyBag_Remove, TheGapIsClosedAndTheValueReleasedOnce) {
    ZVPropertyBag bag;
    bag.Add(MakeObject<CountedObject>(), u"a");
    bag.Add(2, u"b");
    bag.Add(MakeObject<CountedObject>(), u"c");
    bag.SetChanged(false);
    bag.Remove(u"A");
    EXPECT_TRUE(bag.Changed());
    EXPECT_EQ(CountedObject::Alive(), 1);
    EXPECT_EQ(bag.Key(1), u"b");
    bag.Remove(std::int16_t{2});
    EXPECT_EQ(CountedObject::Alive(), 0);
    EXPECT_EQ(Shown(bag), "b=2");
}

TEST(ZVPropertyBag_Release, AnObjectWhoseEndAddsToTheDyingBagFindsItStanding) {
    int calls = 0;
    {
        ZVPropertyBag bag;
        const auto callingBack = [&](Variant added) {
            return MakeObject<CountedObject>([&, added] {
                ++calls;
                bag.Add(added, u"again");
                EXPECT_EQ(bag.Count(), 1);
            });
        };
        bag.Add(callingBack(callingBack(7)), u"m");
    }
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

// Each way a value can be let go runs the same test: the object's end uses the bag it was in.
TEST(ZVPropertyBag_Release, AnObjectWhoseEndUsesTheBagFindsItWhole) {
    const struct {
        const char* what;
        std::function<void(ZVPropertyBag&)> letGo;
        std::int32_t left;
    } table[] = {
        {"Remove", [](ZVPropertyBag& bag) { bag.Remove(2); }, 3},
        {"Write over", [](ZVPropertyBag& bag) { bag.WriteProperty(u"m", 5); }, 4},
        {"no object", [](ZVPropertyBag& bag) { bag.WriteProperty(u"m", Ref<Object>()); }, 4},
        {"Default", [](ZVPropertyBag& bag) { bag.WriteProperty(u"m", 5, {.Default = 5}); }, 3},
        {"Clear", [](ZVPropertyBag& bag) { bag.Clear(); }, 1},
        {"Contents", [](ZVPropertyBag& bag) { bag.SetContents(Variant()); }, 1},
        {"CopyFrom", [](ZVPropertyBag& bag) { bag.CopyFrom(ZVPropertyBag()); }, 1},
    };
    for (const auto& row : table) {
        ZVPropertyBag bag = BagOf({{u"a", 1}, {u"z", 3}});
        int ended = 0;
        bag.Add(MakeObject<CountedObject>([&] {
                    ++ended;
                    bag.WriteProperty(u"from the end", bag.Count());
                }),
                u"m");
        row.letGo(bag);
        EXPECT_EQ(ended, 1) << row.what;
        EXPECT_EQ(bag.Count(), row.left) << row.what;
        EXPECT_EQ(bag.ReadProperty(u"from the end"), Variant(row.left - 1)) << row.what;
    }
}

TEST(ZVPropertyBag_Settings, GranularityIsClampedWhenAssigned) {
    ZVPropertyBag bag;
    EXPECT_EQ(bag.Granularity(), 16);
    for (const auto& [assigned, kept] :
         {std::pair{5, 16}, {16, 16}, {17, 17}, {32768, 32768}, {32769, 32768}, {-1, 16}}) {
        bag.SetGranularity(assigned);
        EXPECT_EQ(bag.Granularity(), kept);
    }
}

TEST(ZVPropertyBag_Settings, KeptAGranularityOutOfTheWordsStandsAsReadAndDoesNoHarm) {
    for (const bool low : {true, false}) {
        Words words = TwoEntries();
        words[54] = low ? INT16_MIN : INT16_MAX;
        ZVPropertyBag bag;
        bag.SetContents(Array::OfWords(words));
        EXPECT_EQ(bag.Granularity(), (low ? INT32_MIN : 0x7FFF0000) + 16);
        for (int i = 0; i < 100; ++i) bag.WriteProperty("n" + std::to_string(i), i);
        EXPECT_EQ(bag.Count(), 102);
    }
}

TEST(ZVPropertyBag_Clear, EverythingIsAsInANewBag) {
    ZVPropertyBag bag = Unsorted();
    bag.SetGranularity(99);
    bag.Clear();
    EXPECT_EQ(bag.Count(), 0);
    EXPECT_EQ(bag.Granularity(), 16);
    EXPECT_TRUE(bag.Sorted());
    EXPECT_FALSE(bag.Changed());
    EXPECT_EQ(bag.Contents(), ZVPropertyBag().Contents());
}

TEST(ZVPropertyBag_CopyFrom, EntriesSettingsAndChangedComeAlong) {
    ZVPropertyBag source = Unsorted();
    source.Add(MakeObject<CountedObject>(), u"o");
    source.SetGranularity(40);
    for (const bool changed : {false, true}) {
        for (const bool mark : {false, true}) {
            source.SetChanged(changed);
            ZVPropertyBag bag = BagOf({{u"old", 1}});
            bag.CopyFrom(source, mark);
            EXPECT_EQ(bag.Contents(), source.Contents());
            EXPECT_EQ(bag.Granularity(), 40);
            EXPECT_EQ(bag.Changed(), changed || mark);
            EXPECT_EQ(bag.Item(4), source.Item(4));  // the same object
        }
    }
    source.CopyFrom(source);
    EXPECT_EQ(source.Count(), 0);  // it cleared itself first
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(ZVPropertyBag_Enumerate, ValuesComeInEntryOrderAndASnapshotStays) {
    ZVPropertyBag bag = BagOf({{u"b", 1}, {u"a", 2}, {u"c", 3}});
    std::string shown;
    for (const Variant& value : bag) shown += value.ToText().ToUtf8();
    EXPECT_EQ(shown, "213");
    Enumerator values = bag.NewEnum();
    bag.Clear();
    Variant value;
    shown.clear();
    while (values.Next(value)) shown += value.ToText().ToUtf8();
    EXPECT_EQ(shown, "213");
    EXPECT_EQ(bag.begin(), bag.end());
}

TEST(ZVPropertyBag_Move, TheSourceIsEmptyAndUsable) {
    ZVPropertyBag bag = BagOf({{u"a", 1}});
    ZVPropertyBag other = std::move(bag);
    EXPECT_EQ(Shown(other), "a=1");
    bag = ZVPropertyBag();
    bag.WriteProperty(u"b", 2);
    swap(bag, other);
    EXPECT_EQ(Shown(bag), "a=1");
    static_assert(std::is_nothrow_move_constructible_v<ZVPropertyBag>);
    static_assert(std::is_nothrow_move_assignable_v<ZVPropertyBag>);
}

TEST(ZVPropertyBag_Arguments, MayLiveInsideTheBag) {
    ZVPropertyBag bag;
    bag.WriteProperty(u"a", u"a text long enough to be worth sharing");
    for (int i = 0; i < 40; ++i) bag.Add(*bag.begin(), "n" + std::to_string(i));
    EXPECT_EQ(bag.Item(41), bag.Item(1));
    bag.WriteProperty(u"words", bag.Contents());
    bag.SetContents(bag.Item(u"words"));
    EXPECT_EQ(bag.Count(), 41);
    Variant value;
    bag.CopyItemValue(*bag.begin(), value);
    EXPECT_EQ(value, Variant());
}

TEST(ZVPropertyBag_Late, EveryMemberIsReachedByName) {
    const Ref<ZVPropertyBag> bag = MakeObject<ZVPropertyBag>();
    Object& late = *bag;
    const auto call = [&](const char16_t* member, std::vector<Variant> arguments = {}) {
        return late.Call(member, arguments);
    };
    const Variant omitted = Variant::FromError(-2147352572);
    EXPECT_EQ(call(u"add", {1, u"b"}), Variant(1));
    EXPECT_EQ(call(u"ADD", {2, u"a", omitted, omitted, omitted, true}), Variant(1));
    EXPECT_EQ(call(u"Add", {2, u"a"}), Variant(std::int16_t{-28501}));
    EXPECT_EQ(late.Get(u"Count"), Variant(2));
    EXPECT_EQ(late.Get(u"Item", std::vector<Variant>{u"b"}), Variant(1));
    EXPECT_EQ(call(u"ItemFn", {2}), Variant(1));
    EXPECT_EQ(call(u"CopyItemValue", {7}), Variant());
    EXPECT_EQ(call(u"Key", {1}), Variant(u"a"));
    EXPECT_EQ(call(u"ObjName", {1}), Variant(u""));
    EXPECT_EQ(call(u"PropIsObject", {1}), Variant(false));
    EXPECT_EQ(call(u"ClassName"), Variant(kClass));
    EXPECT_EQ(late.TypeName(), u"ZVPropertyBag");
    call(u"WriteProperty", {u"c", 5, 5});
    call(u"WriteProperty", {u"d", 5});
    EXPECT_EQ(call(u"ReadProperty", {u"c", u"default"}), Variant(u"default"));
    EXPECT_EQ(call(u"ReadProperty", {u"x", omitted, 3}), Variant(5));
    call(u"Remove", {u"d"});
    call(u"WriteProperty", {u"e", Variant::FromError(5)});  // an error code, not an omission
    EXPECT_EQ(bag->Item(u"e"), Variant::FromError(5));
    call(u"Remove", {3});
    late.Set(u"Changed", false);
    EXPECT_EQ(late.Get(u"Changed"), Variant(false));
    late.Set(u"Granularity", u"20.5");
    EXPECT_EQ(late.Get(u"Granularity"), Variant(20));
    EXPECT_EQ(late.Get(u"Sorted"), Variant(true));
    const Ref<ZVPropertyBag> other = MakeObject<ZVPropertyBag>();
    other->Set(u"Contents", late.Get(u"Contents"));
    EXPECT_EQ(Shown(*other), "a=2 b=1");
    call(u"Clear");
    call(u"CopyFrom", {other, true});
    EXPECT_EQ(Shown(*bag), "a=2 b=1");
    EXPECT_TRUE(bag->Changed());
    const struct {
        const char* what;
        std::function<void()> run;
        std::int32_t number;
    } errors[] = {
        {"no such member", [&] { call(u"Items"); }, 438},
        {"no such property", [&] { late.Set(u"Sorted", true); }, 438},
        {"argument missing", [&] { call(u"Item"); }, 5},
        {"no object", [&] { call(u"CopyFrom", {Ref<Object>()}); }, 91},
        {"no bag", [&] { call(u"CopyFrom", {MakeObject<CountedObject>()}); }, 13},
        {"no number", [&] { call(u"Key", {u"a"}); }, 13},
    };
    for (const auto& row : errors) EXPECT_EQ(NumberRaisedBy(row.run), row.number) << row.what;
}

}  // namespace
}  // namespace zorvane
