#include "demos/PropBagSession.h"

#include "platform/NumberText.h"
#include "runtime/FileWords.h"

namespace zorvane {

ZVPropertyBag& PropBagSession::Bag() {
    if (!bag_) bag_ = MakeObject<ZVPropertyBag>();
    return *bag_;
}

Text PropBagSession::EntryName(std::int32_t number) {
    return Text(u"DemoZVPropertyBag") + LongText(number);
}

void PropBagSession::Load(const Text& path) {
    lasting_ = modZorvane::CanWriteFileWords(path);
    Bag().SetContents(modZorvane::ReadFileWords(path));
}

void PropBagSession::Save(const Text& path) {
    modZorvane::WriteFileWords(path, Bag().Contents());
}

}  // namespace zorvane
