// Every k-th allocation fails, for each operation: afterwards the bag is as before, or as after.

#include <gtest/gtest.h>

#include <functional>
#include <new>

#include "platform/Classes.h"
#include "platform/Font.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/propbag/CountedMemory.h"

namespace zorvane {
namespace {

void Fill(ZVPropertyBag& bag) {
    // As many as fit: the next one makes the store grow.
    for (int i = 11; i < 26; ++i) bag.WriteProperty("name" + std::to_string(i), i);
    bag.Add(MakeObject<CountedObject>(), u"object");
    bag.SetChanged(false);
}

std::string StateOf(const ZVPropertyBag& bag) {
    std::string state = bag.Changed() ? "changed" : "unchanged";
    state += bag.Sorted() ? " sorted" : " unsorted";
    for (std::int32_t i = 1; i <= bag.Count(); ++i) {
        state += " " + bag.Key(i).ToUtf8() + std::to_string(static_cast<int>(bag.Item(i).Type())) +
                 bag.ObjName(i).ToUtf8();
        if (bag.Item(i).IsNumber()) state += "=" + bag.Item(i).ToText().ToUtf8();
    }
    return state;
}

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
        {"Add by position", [](ZVPropertyBag& bag) { bag.Add(1, u"n", {.Position = 2}); }, 1},
        {"WriteProperty, new", [](ZVPropertyBag& bag) { bag.WriteProperty(u"new", u"text"); }, 3},
        {"WriteProperty, over", [](ZVPropertyBag& bag) { bag.WriteProperty(u"name12", u"t"); }, 2},
        {"WriteProperty, font", [&](ZVPropertyBag& bag) { bag.WriteProperty(u"F", font); }, 5},
        {"Remove", [](ZVPropertyBag& bag) { bag.Remove(u"object"); }, 1},
        {"Contents, assigned", [&](ZVPropertyBag& bag) { bag.SetContents(contents); }, 5},
        {"Contents, read", [](ZVPropertyBag& bag) { static_cast<void>(bag.Contents()); }, 1},
        {"CopyFrom", [&](ZVPropertyBag& bag) { bag.CopyFrom(other, true); }, 1},
        {"NewEnum", [](ZVPropertyBag& bag) { static_cast<void>(bag.NewEnum()); }, 2},
    };
    for (const auto& row : table) {
        std::string after;
        {
            ZVPropertyBag bag;
            Fill(bag);
            row.run(bag);
            after = StateOf(bag);
        }
        int failures = 0;
        for (bool done = false; !done; ++failures) {
            ZVPropertyBag bag;
            Fill(bag);
            const std::string before = StateOf(bag);
            bool threw = false;
            {
                const memory::FailAllocation failing(failures + 1);
                try {
                    row.run(bag);
                } catch (const std::bad_alloc&) {
                    threw = true;
                }
                done = !memory::FailAllocation::Happened();
            }
            ASSERT_EQ(threw, !done) << row.what;
            EXPECT_EQ(StateOf(bag), threw ? before : after) << row.what << " " << failures;
            EXPECT_LE(CountedObject::Alive(), 1) << row.what;
        }
        EXPECT_GT(failures, row.least) << row.what;
        EXPECT_EQ(CountedObject::Alive(), 0) << row.what;
    }
}

TEST(ZVPropertyBag_OutOfMemory, NothingIsLeakedOrReleasedTwice) {
    const std::size_t before = memory::InUse();
    for (int k = 1; k < 400; ++k) {
        ZVPropertyBag bag;
        const memory::FailAllocation failing(k);
        try {
            Fill(bag);
            ZVPropertyBag copy;
            copy.SetContents(bag.Contents());
            copy.CopyFrom(bag);
        } catch (const std::bad_alloc&) {
        }
    }
    EXPECT_EQ(CountedObject::Alive(), 0);
    EXPECT_EQ(memory::InUse(), before);
}

}  // namespace
}  // namespace zorvane
