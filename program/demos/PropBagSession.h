#pragma once
// PropBagSession: what the property-bag windows share: the bag that they are kept in, the counter
// that numbers them, and the file between two openings. Knows no window and no screen.

#include <cstdint>
#include <filesystem>
#include <system_error>

#include "zorvane/platform/Text.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace zorvane {

class PropBagSession {
  public:
    // Created on first use, kept as long as the session.
    [[nodiscard]] ZVPropertyBag& Bag();
    // The name under which the window of that number is kept.
    [[nodiscard]] static Text EntryName(std::int32_t number);

    // Open windows, by which the next one is numbered.
    // Kept: a closed window gives its number back, even while windows of higher numbers are open.
    std::int32_t Counter = 0;

    // What keeps the windows' settings from outlasting the program. As found when loading: the
    // folder takes no file, the file may not be written, what has its name is a folder or no file,
    // the file may not be read, or holds something else than a bag. And, while nothing of that is
    // found, what kept the last saving from it: the disk is full, others have the file, or what
    // Failure() says.
    enum class Obstacle {
        None,
        Folder,
        ReadOnly,
        IsFolder,
        NoFile,
        Unreadable,
        Foreign,
        Full,
        Busy,
        Refused,
        Failed
    };
    [[nodiscard]] Obstacle Keeping() const noexcept { return keeping_; }
    [[nodiscard]] const std::error_code& Failure() const noexcept { return failure_; }
    // Of the file last loaded or saved.
    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return path_; }

    // The bag becomes what the file holds: nothing where there is no such file or another kind of
    // one. Never raises for a file.
    void Load(const std::filesystem::path& path);
    // Raises what the bag's Contents raises; a file that cannot be written is left alone, and
    // Keeping() says so.
    void Save(const std::filesystem::path& path);

  private:
    Ref<ZVPropertyBag> bag_;
    Obstacle keeping_ = Obstacle::None;
    std::error_code failure_;  // of the last saving
    std::filesystem::path path_;
};

}  // namespace zorvane
