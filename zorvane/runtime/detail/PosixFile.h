#pragma once
// The few file calls that reading and saving need, each carried through interruptions and short
// counts. Failures are results, never exceptions; errno says why.

#include <sys/types.h>

#include <cerrno>
#include <cstddef>
#include <span>
#include <string>
#include <utility>

namespace zorvane {

// Owns one open file; closes it at the end of its life.
class Descriptor {
  public:
    constexpr Descriptor() noexcept = default;
    explicit Descriptor(int number) noexcept : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor();

    [[nodiscard]] int Number() const noexcept { return number_; }
    // Lets go without closing: the caller takes over the open file.
    [[nodiscard]] int Detach() noexcept { return std::exchange(number_, -1); }
    explicit operator bool() const noexcept { return number_ >= 0; }

  private:
    int number_ = -1;
};

// Repeats a call that gives -1 while a signal interrupts it.
template <class Call>
auto Uninterrupted(Call&& call) noexcept {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

// openat(2) that survives interruptions; closed on exec, never a controlling terminal and never
// waiting for the other end of a pipe.
[[nodiscard]] Descriptor OpenAt(int directory, const std::string& name, int flags,
                                mode_t mode = 0) noexcept;
// Fills `bytes` from the file's byte `offset` on; gives how many bytes there were until the end of
// the file or a failure.
[[nodiscard]] std::size_t ReadAt(const Descriptor& file, std::span<std::byte> bytes,
                                 std::size_t offset) noexcept;
// True when every byte was written.
[[nodiscard]] bool WriteAt(const Descriptor& file, std::span<const std::byte> bytes,
                           std::size_t offset) noexcept;
// Makes room for `size` bytes in all, so that writing them finds no full disk and no limit; true
// also where the file system knows no such promise.
[[nodiscard]] bool Reserve(const Descriptor& file, std::size_t size) noexcept;
// True when file or directory has reached the disk, or lies on something that cannot be synced.
[[nodiscard]] bool Sync(const Descriptor& file) noexcept;

// A path split where its last name begins. The directory part names links still.
struct SplitPath {
    std::string Directory;  // never empty
    std::string Name;       // empty when the path ends in a separator
};
// Follows links from the last name until a name that is none, present or not; an empty Name when
// the links go in a circle.
[[nodiscard]] SplitPath FollowLinks(const std::string& path);

}  // namespace zorvane
