#pragma once
// System calls and allocations that fail on purpose. The linker leads every call that the code
// under test makes through here; while nothing is armed they do what they always do.

#include <string>

namespace zorvane {

enum class Call {
    Openat,
    Fstat,
    Readlink,
    Pread,
    Pwrite,
    Fallocate,
    Fsync,
    Fchown,
    Fchmod,
    Flock,
    Linkat,
    Renameat,
    Ftruncate,
    Allocate,
};
inline constexpr int kCalls = 14;
[[nodiscard]] const char* NameOf(Call call) noexcept;

// Instead of an error number: the call does only half of its bytes.
inline constexpr int kShortCount = -1;

struct Fault {
    Call At;
    int Nth;                  // 1 is the first call of its kind
    int Error;                // what errno says; for Allocate without meaning
    bool FromThenOn = false;  // every later one fails too
};

// From here to the end of its life the fault is armed.
class Armed {
  public:
    explicit Armed(const Fault& fault) noexcept;
    Armed(const Armed&) = delete;
    Armed& operator=(const Armed&) = delete;
    ~Armed();
    [[nodiscard]] bool Hit() const noexcept;  // the call was made
};

// While one lives, files without a name cannot be made.
class NoUnnamedFiles {
  public:
    NoUnnamedFiles() noexcept;
    NoUnnamedFiles(const NoUnnamedFiles&) = delete;
    NoUnnamedFiles& operator=(const NoUnnamedFiles&) = delete;
    ~NoUnnamedFiles();
};

}  // namespace zorvane
