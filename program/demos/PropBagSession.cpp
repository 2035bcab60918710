#include "program/demos/PropBagSession.h"

#include "zorvane/platform/NumberText.h"
#include "zorvane/propbag/BagFile.h"
#include "zorvane/runtime/FileWords.h"

namespace zorvane {
namespace {

using Obstacle = PropBagSession::Obstacle;

Obstacle ObstacleAt(const std::filesystem::path& path, const BagLoading& loading,
                    const ZVPropertyBag& bag) {
    namespace fs = std::filesystem;
    std::error_code unknown;
    const fs::file_status found = fs::status(path, unknown);
    if (fs::is_regular_file(found) && loading.Error) return Obstacle::Unreadable;
    if (fs::is_directory(found)) return Obstacle::IsFolder;
    if (!modZorvane::CheckFileWords(path)) {
        // What whole entries are left of is a bag still.
        const bool none = loading.Foreign || (loading.Damaged && bag.Count() == 0);
        return none ? Obstacle::Foreign : Obstacle::None;
    }
    if (!fs::exists(found)) return Obstacle::Folder;
    return fs::is_regular_file(found) ? Obstacle::ReadOnly : Obstacle::NoFile;
}

Obstacle ObstacleOf(const std::error_code& failure) {
    if (!failure) return Obstacle::None;
    if (failure == std::errc::no_space_on_device) return Obstacle::Full;
    if (failure == std::errc::device_or_resource_busy) return Obstacle::Busy;
    for (const std::errc refusal :
         {std::errc::permission_denied, std::errc::operation_not_permitted,
          std::errc::read_only_file_system}) {
        if (failure == refusal) return Obstacle::Refused;
    }
    return Obstacle::Failed;
}

}  // namespace

ZVPropertyBag& PropBagSession::Bag() {
    if (!bag_) bag_ = MakeObject<ZVPropertyBag>();
    return *bag_;
}

Text PropBagSession::EntryName(std::int32_t number) {
    return Text(u"DemoZVPropertyBag") + LongText(number);
}

void PropBagSession::Load(const std::filesystem::path& path) {
    const BagLoading loading = LoadBagFile(path, Bag());
    path_ = path;
    keeping_ = ObstacleAt(path, loading, Bag());
    if (keeping_ == Obstacle::None) keeping_ = ObstacleOf(failure_);
}

void PropBagSession::Save(const std::filesystem::path& path) {
    failure_ = modZorvane::SaveFileWords(path, Bag().Contents());
    path_ = path;
    keeping_ = ObstacleOf(failure_);
}

}  // namespace zorvane
