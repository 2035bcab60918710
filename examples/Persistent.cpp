// A class of one's own that a property bag stores, and makes anew by its name.
#include <iostream>

#include "zorvane/platform/Classes.h"
#include "zorvane/propbag/IZVPropertyBag.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace {

using zorvane::Text, zorvane::Variant;

class Track : public zorvane::IZVPropertyBag {
  public:
    Text Title = "untitled";
    double Minutes = 3.0;
    zorvane::Ref<zorvane::Object> Next;  // perhaps another track

    Text TypeName() const override { return "Track"; }
    Text ClassName() const override { return "Example.Track"; }
    Variant ParentObject() override { return {}; }
    void InitProperties() override {}  // nothing stored: the initial values stand
    void ReadProperties(zorvane::ZVPropertyBag& bag) override {
        Title = bag.ReadProperty("Title", {.Default = Title}).ToText();
        Minutes = bag.ReadProperty("Minutes", {.Default = Minutes}).ToDouble();
        Next = bag.ReadProperty("Next", {.Default = zorvane::Ref<zorvane::Object>()}).AsObject();
    }
    void WriteProperties(zorvane::ZVPropertyBag& bag) override {
        bag.WriteProperty("Title", Title, {.Default = "untitled"});
        bag.WriteProperty("Minutes", Minutes, {.Default = 3.0});
        bag.WriteProperty("Next", Next);
    }
};

}  // namespace

int main() {
    zorvane::CreatableClasses().Register("Example.Track", [] {
        return zorvane::Ref<zorvane::Object>(zorvane::MakeObject<Track>());
    });

    const auto first = zorvane::MakeObject<Track>();
    first->Title = "Overture";
    first->Next = zorvane::MakeObject<Track>();
    zorvane::ZVPropertyBag bag;
    bag.WriteProperty("Opening", first);

    zorvane::ZVPropertyBag copy;
    copy.SetContents(bag.Contents());  // through the words that a file would hold
    std::cout << "stored as " << copy.ObjName("Opening") << '\n';
    auto track = zorvane::ViewAs<Track>(copy.ReadProperty("Opening").AsObject());
    while (track) {
        std::cout << track->Title << ", " << track->Minutes << " minutes\n";
        track = zorvane::ViewAs<Track>(track->Next);
    }
    std::cout << (first->Next ? "the first one still has its own next" : "lost") << '\n';
}
