// Every k-th allocation fails, for each operation: afterwards the bag is as before, or as after.

#include <gtest/gtest.h>

#include <functional>

#include "platform/Font.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/support/AllocationFaults.h"
#include "tests/unit/CountedObject.h"

namespace zorvane {
namespace {

// As many entries as fit: the next one makes the store grow.
ZVPropertyBag Filled() {
    ZVPropertyBag bag;
    for (int i = 11; i < 26; ++i) bag.WriteProperty("name" + std::to_string(i), i);
    bag.Add(MakeObject<CountedObject>(), u"object");
    bag.SetChanged(false);
    return bag;
}

std::string StateOf(const ZVPropertyBag& bag) {
    std::ostringstream state;
    state << bag.Changed() << bag.Sorted();
    for (std::int32_t i = 1; i <= bag.Count(); ++i) {
        const Variant item = bag.Item(i);
        state << ' ' << bag.Key(i) << bag.ObjName(i) << static_cast<int>(item.Type());
        if (item.IsNumber()) state << '=' << item;
    }
    return state.str();
}

// The sanitizers watch here for what leaks or is freed twice.
TEST(ZVPropertyBag_OutOfMemory, EveryFailingAllocationLeavesTheBagAsItWas) {
    ZVPropertyBag other;
    other.WriteProperty(u"one", u"a text that lives outside");
    other.WriteProperty(u"two", Array(VarType::Variant, 0, 3));
    const Array contents = other.Contents();
    const auto font = MakeObject<Font>(FontValue{.Name = u"Sans", .Italic = true});
    const struct {
        const char* what;
        std::function<void(ZVPropertyBag&)> run;
        int least;  // allocations that the operation is known to make at least
    } table[] = {
        {"Add", [](ZVPropertyBag& bag) { bag.Add(u"a text", u"new name"); }, 3},
        {"Add by position", [](ZVPropertyBag& bag) { bag.Add(1, u"n", {.Position = 2}); }, 2},
        {"WriteProperty, new", [](ZVPropertyBag& bag) { bag.WriteProperty(u"new", u"text"); }, 3},
        {"WriteProperty, over", [](ZVPropertyBag& bag) { bag.WriteProperty(u"name12", u"t"); }, 2},
        {"WriteProperty, font", [&](ZVPropertyBag& bag) { bag.WriteProperty(u"F", font); }, 5},
        {"Remove", [](ZVPropertyBag& bag) { bag.Remove(u"object"); }, 1},
        {"Contents, assigned", [&](ZVPropertyBag& bag) { bag.SetContents(contents); }, 5},
        {"Contents, read", [](ZVPropertyBag& bag) { static_cast<void>(bag.Contents()); }, 1},
        {"CopyFrom", [&](ZVPropertyBag& bag) { bag.CopyFrom(other, true); }, 1},
        {"NewEnum", [](ZVPropertyBag& bag) { static_cast<void>(bag.NewEnum()); }, 2},
        {"a bag filled, read and copied",
         [](ZVPropertyBag& bag) {
             ZVPropertyBag filled = Filled();
             ZVPropertyBag read;
             read.SetContents(filled.Contents());
             read.CopyFrom(filled);
             bag = std::move(read);
         },
         41},
    };
    for (const auto& row : table) {
        ZVPropertyBag bag = Filled();
        const std::string before = StateOf(bag);
        row.run(bag);
        const std::string after = StateOf(bag);
        bag.Clear();
        const int failures = WithEveryAllocationFailing(
            Filled, row.run, [&](const ZVPropertyBag& tried, bool failed) {
                EXPECT_EQ(StateOf(tried), failed ? before : after) << row.what;
                EXPECT_LE(CountedObject::Alive(), 1) << row.what;
            });
        EXPECT_GE(failures, row.least) << row.what;
        EXPECT_EQ(CountedObject::Alive(), 0) << row.what;
    }
}

}  // namespace
}  // namespace zorvane
