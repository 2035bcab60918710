#include <cstdint>

#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Version.h"
#include "zorvane/propbag/ZVPropertyBag.h"

static_assert(ZORVANE_VERSION_MAJOR >= 1);

// The one symbol that this library shows: how many words a list takes in a bag.
extern "C" [[gnu::visibility("default")]] std::int32_t WordsOfTwoNames() {
    zorvane::KeyListEX list;
    list.Add(1, "Ada");
    list.Add(2, "Grace", {.ReturnItem = true});
    zorvane::ZVPropertyBag bag;
    for (std::int32_t i = 1; i <= list.Count(); ++i) bag.WriteProperty(list.Key(i), list.Item(i));
    return bag.Contents().Count();
}
