// Beyond what the model run compares.

#include "tests/support/Testing.h"
#include "zorvane/keylist/KeyListEX.h"

#include "tests/support/ScriptedSource.h"

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

}  // namespace
}  // namespace zorvane
