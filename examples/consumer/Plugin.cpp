#include <cstdint>

#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Classes.h"
#include "zorvane/platform/Version.h"
#include "zorvane/propbag/ZVPropertyBag.h"

#if ZORVANE_VERSION < 20000
#error Headers of this version stand elsewhere.
#endif

namespace {

class Guest : public zorvane::Object {
  public:
    zorvane::Text TypeName() const override { return "Guest"; }
};

}  // namespace

// The two symbols that this library shows. How many words a list takes in a bag ...
extern "C" [[gnu::visibility("default")]] std::int32_t WordsOfTwoNames() {
    zorvane::KeyListEX list;
    list.Add(1, "Ada");
    list.Add(2, "Grace", {.ReturnItem = true});
    zorvane::ZVPropertyBag bag;
    for (std::int32_t i = 1; i <= list.Count(); ++i) bag.WriteProperty(list.Key(i), list.Item(i));
    return bag.Contents().Count();
}

// ... and a class that a program can make by its name, where both share the library.
extern "C" [[gnu::visibility("default")]] void AddClasses() {
    zorvane::CreatableClasses().Register("Consumer.Guest", [] {
        return zorvane::Ref<zorvane::Object>(zorvane::MakeObject<Guest>());
    });
}
