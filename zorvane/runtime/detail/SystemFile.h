#pragma once
// What reading and saving whole files ask of the system, and all that differs between systems.
//
// PosixFile.cpp and WindowsFile.cpp each hold all of it and say which promises they keep, and how.
// Failures are results that compare with std::errc alike on every system; nothing is raised but
// what an allocation raises. errc::resource_unavailable_try_again: somebody else came in between,
// and the whole save begins anew. errc::operation_not_supported: not known here.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>
#include <utility>

namespace zorvane {

// Owns one open file or folder; closes it at the end of its life.
class SystemFile {
  public:
    constexpr SystemFile() noexcept = default;
    explicit SystemFile(std::intptr_t handle) noexcept : handle_(handle) {}
    SystemFile(SystemFile&& other) noexcept : handle_(std::exchange(other.handle_, kNone)) {}
    SystemFile& operator=(SystemFile&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~SystemFile();

    // As the system knows it: a descriptor or a handle.
    [[nodiscard]] std::intptr_t Handle() const noexcept { return handle_; }
    // Lets go without closing: the caller takes over the open file.
    [[nodiscard]] std::intptr_t Detach() noexcept { return std::exchange(handle_, kNone); }
    explicit operator bool() const noexcept { return handle_ != kNone; }

    // Waits a little for others who hold the file: readers read together, a writer is alone.
    // Only those who ask are kept out. False: it is still held; where nothing can be held, true.
    enum class Turn { Read, Write };
    [[nodiscard]] bool Await(Turn turn) const noexcept;
    // Fills `bytes` from the file's byte `offset` on; `got` are there until the end of the file or
    // a failure.
    [[nodiscard]] std::error_code ReadAt(std::span<std::byte> bytes, std::uint64_t offset,
                                         std::size_t& got) const noexcept;
    // Makes room for `size` bytes in all, so that writing them finds no full disk and no limit;
    // nothing happens where the file system knows no such promise.
    [[nodiscard]] std::error_code Reserve(std::uint64_t size) const noexcept;
    // Success when file or folder has reached the disk, or lies on something that has none.
    [[nodiscard]] std::error_code Sync() const noexcept;
    [[nodiscard]] std::error_code Truncate(std::uint64_t size) const noexcept;
    // Success when every byte was written.
    [[nodiscard]] std::error_code WriteAt(std::span<const std::byte> bytes,
                                          std::uint64_t offset) const noexcept;

  private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t handle_ = kNone;
};

// Opens a regular file through links when nobody writes in it, and says how long it is.
[[nodiscard]] std::error_code OpenToRead(const std::filesystem::path& path, SystemFile& file,
                                         std::uint64_t& size);

// Where a path leads to through links: a name in a folder, and the regular file of that name.
struct SavePlace {
    SystemFile Folder;           // where a system works from open folders
    std::filesystem::path Name;  // seen from there
    SystemFile Old;              // for reading and writing; nothing when there is no such file yet
    std::uint64_t OldSize = 0;
    // No other file may take the old one's place: it has other names, which are to see the new
    // words too, or parts that a new file would lack.
    bool OldStays = false;

    [[nodiscard]] std::error_code Open(const std::filesystem::path& path);
    // Looks again at what another process may have changed since; try_again when the name leads
    // to another file now.
    [[nodiscard]] std::error_code LookAgain();
    // Whether the folder takes a new file.
    [[nodiscard]] std::error_code MayAdd() const;
    // What killed processes left in the folder goes away; nothing is said of failures.
    void RemoveLeftOvers() const;
    // The name's present meaning is on the disk.
    [[nodiscard]] std::error_code Settle() const;
};

// A new file while it is assembled. Gone at the end of its life unless it has taken the place.
// Nobody who removes left-overs takes it for one.
class NewFile {
  public:
    // The place outlives it.
    explicit NewFile(SavePlace& place) noexcept : place_(place) {}
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    // Without a name a killed process leaves nothing; under a temporary one it may.
    enum class Naming { None, Temporary };
    [[nodiscard]] std::error_code Create(Naming naming);
    // Owner, mode, access list and attributes become the old file's.
    [[nodiscard]] std::error_code KeepAttributes() const;
    // In one step the new file stands where the old one stood.
    [[nodiscard]] std::error_code TakePlace();
    [[nodiscard]] const SystemFile& File() const noexcept { return file_; }

  private:
    SavePlace& place_;
    SystemFile file_;
    std::filesystem::path name_;  // of its own; empty while there is none
};

}  // namespace zorvane
