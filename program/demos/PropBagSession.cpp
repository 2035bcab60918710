#include "program/demos/PropBagSession.h"

#include <filesystem>
#include <system_error>

#include "zorvane/platform/NumberText.h"
#include "zorvane/runtime/FileWords.h"

namespace zorvane {
namespace {

PropBagSession::Obstacle ObstacleAt(const Text& path) {
    namespace fs = std::filesystem;
    if (!modZorvane::CheckFileWords(path.ToUtf8())) return PropBagSession::Obstacle::None;
    std::error_code unknown;
    const fs::file_status found = fs::status(path.ToUtf8(), unknown);
    if (!fs::exists(found)) return PropBagSession::Obstacle::Folder;
    return fs::is_regular_file(found) ? PropBagSession::Obstacle::ReadOnly
                                      : PropBagSession::Obstacle::NoFile;
}

}  // namespace

ZVPropertyBag& PropBagSession::Bag() {
    if (!bag_) bag_ = MakeObject<ZVPropertyBag>();
    return *bag_;
}

Text PropBagSession::EntryName(std::int32_t number) {
    return Text(u"DemoZVPropertyBag") + LongText(number);
}

void PropBagSession::Load(const Text& path) {
    keeping_ = ObstacleAt(path);
    Bag().SetContents(modZorvane::ReadFileWords(path));
}

void PropBagSession::Save(const Text& path) {
    modZorvane::WriteFileWords(path, Bag().Contents());
}

}  // namespace zorvane
