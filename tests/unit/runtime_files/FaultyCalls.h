#pragma once
// System calls and allocations that fail on purpose. The linker leads every call that the code
// under test makes through here; while nothing is armed they do what they always do. For one source
// file of a program.

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <functional>
#include <string>
#include <string_view>

#include "tests/support/AllocationFaults.h"

namespace zorvane {

inline constexpr std::string_view kAllocation = "allocation";
inline constexpr std::string_view kCalls[] = {
    "openat",     "fstat",           "fstatat",   "readlink",     "pread",
    "pwrite",     "posix_fallocate", "fsync",     "fchown",       "fchmod",
    "flock",      "linkat",          "renameat",  "ftruncate",    "fdopendir",
    "flistxattr", "fgetxattr",       "fsetxattr", "fremovexattr", kAllocation};

// Instead of an error number: the call does only half of its bytes; and then every later one fails;
// the process is killed in front of it; the process is killed halfway through its bytes; another
// process comes in between and does what Armed was told.
inline constexpr int kShortCount = -1;
inline constexpr int kShortThenDead = -2;
inline constexpr int kKilled = -3;
inline constexpr int kKilledHalfway = -4;
inline constexpr int kMeanwhile = -5;

struct Fault {
    std::string_view At;
    int Nth;                  // 1 is the first call of its kind
    int Error;                // what errno says; for an allocation without meaning
    bool FromThenOn = false;  // every later one fails too; not for an allocation
};

// From here to the end of its life the fault is armed, and files without a name may be refused.
class Armed {
  public:
    explicit Armed(
        const Fault& fault, bool unnamedFiles = true, std::function<void()> meanwhile = [] {})
        : fault_(fault), unnamedFiles_(unnamedFiles), meanwhile_(std::move(meanwhile)) {
        order_.reserve(100);  // nothing is allocated while one is to fail
        armed_ = this;
        if (fault_.At == kAllocation) FailAllocation(fault_.Nth);
    }
    Armed(const Armed&) = delete;
    Armed& operator=(const Armed&) = delete;
    ~Armed() {
        armed_ = nullptr;
        FailAllocation(0);
    }
    // The call was made.
    [[nodiscard]] bool Hit() const noexcept { return seen_ >= fault_.Nth || AllocationHasFailed(); }

    // What was done to the disk: w bytes and m the marker alone are written, f a file and d a
    // folder reach it, r a file gets a name.
    [[nodiscard]] const std::string& Order() const noexcept { return order_; }
    static void NoteDone(char what) {
        if (armed_ && (what != 'w' || !armed_->order_.ends_with('w'))) armed_->order_ += what;
    }
    // The permissions that files were made with, all together.
    [[nodiscard]] mode_t MadeWith() const noexcept { return madeWith_; }
    static void NoteMade(mode_t mode) noexcept {
        if (armed_) armed_->madeWith_ |= mode;
    }
    [[nodiscard]] static bool RefusesUnnamedFiles() noexcept {
        return armed_ && !armed_->unnamedFiles_;
    }
    // What is to happen to this call: 0 nothing, else an error number, or a short count.
    [[nodiscard]] static int FaultFor(std::string_view call) noexcept {
        if (!armed_ || armed_->fault_.At != call) return 0;
        const Fault& fault = armed_->fault_;
        const bool later = ++armed_->seen_ > fault.Nth;
        if (later && fault.Error == kShortThenDead) return EIO;
        if (armed_->seen_ == fault.Nth && fault.Error == kKilled) std::raise(SIGKILL);
        if (armed_->seen_ == fault.Nth && fault.Error == kMeanwhile) armed_->meanwhile_();
        return (later && fault.FromThenOn) || armed_->seen_ == fault.Nth ? fault.Error : 0;
    }
    [[nodiscard]] static bool Fails(std::string_view call) noexcept {
        const int error = FaultFor(call);
        if (error > 0) errno = error;
        return error > 0;
    }

  private:
    static inline Armed* armed_ = nullptr;
    Fault fault_;
    bool unnamedFiles_;
    std::function<void()> meanwhile_;
    std::string order_;
    int seen_ = 0;
    mode_t madeWith_ = 0;
};

}  // namespace zorvane

using zorvane::Armed;
using zorvane::kKilledHalfway;
using zorvane::kMeanwhile;

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the linker's.
#define ZORVANE_WRAPPER(result, function, parameters) \
    result __real_##function parameters;              \
    result __wrap_##function parameters;              \
    result __wrap_##function parameters

#define ZORVANE_WRAP(result, function, parameters, arguments)              \
    ZORVANE_WRAPPER(result, function, parameters) {                        \
        return Armed::Fails(#function) ? -1 : __real_##function arguments; \
    }

ZORVANE_WRAP(int, fstat, (int file, struct stat* state), (file, state))
ZORVANE_WRAP(int, fstatat, (int folder, const char* name, struct stat* state, int flags),
             (folder, name, state, flags))
ZORVANE_WRAP(int, fchown, (int file, uid_t user, gid_t group), (file, user, group))
ZORVANE_WRAP(int, fchmod, (int file, mode_t mode), (file, mode))
ZORVANE_WRAP(int, flock, (int file, int how), (file, how))
ZORVANE_WRAP(int, ftruncate, (int file, off_t size), (file, size))
ZORVANE_WRAP(int, linkat, (int from, const char* old, int to, const char* name, int flags),
             (from, old, to, name, flags))
ZORVANE_WRAP(ssize_t, flistxattr, (int file, char* names, size_t size), (file, names, size))
ZORVANE_WRAP(ssize_t, fgetxattr, (int file, const char* name, void* value, size_t size),
             (file, name, value, size))
ZORVANE_WRAP(int, fsetxattr,
             (int file, const char* name, const void* value, size_t size, int flags),
             (file, name, value, size, flags))
ZORVANE_WRAP(int, fremovexattr, (int file, const char* name), (file, name))
ZORVANE_WRAP(ssize_t, readlink, (const char* path, char* target, size_t size), (path, target, size))

#define ZORVANE_WRAP_BYTES(function, bytes_type)                                              \
    ZORVANE_WRAPPER(ssize_t, function, (int file, bytes_type bytes, size_t size, off_t at)) { \
        const int fault = Armed::FaultFor(#function);                                         \
        if (fault > 0) return errno = fault, -1;                                              \
        if constexpr (std::is_const_v<std::remove_pointer_t<bytes_type>>)                     \
            Armed::NoteDone(at == 0 && size <= 4 ? 'm' : 'w');                                \
        const bool whole = fault == 0 || fault == kMeanwhile;                                 \
        const size_t some = whole ? size : (size + 1) / 2;                                    \
        const ssize_t done = __real_##function(file, bytes, some, at);                        \
        if (fault == kKilledHalfway) std::raise(SIGKILL);                                     \
        return done;                                                                          \
    }

ZORVANE_WRAP_BYTES(pread, void*)
ZORVANE_WRAP_BYTES(pwrite, const void*)

ZORVANE_WRAPPER(int, openat, (int directory, const char* name, int flags, mode_t mode)) {
    if (Armed::RefusesUnnamedFiles() && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) Armed::NoteMade(mode);
    return Armed::Fails("openat") ? -1 : __real_openat(directory, name, flags, mode);
}

ZORVANE_WRAPPER(int, fsync, (int file)) {
    struct stat state {};
    __real_fstat(file, &state);
    Armed::NoteDone(S_ISDIR(state.st_mode) ? 'd' : 'f');
    return Armed::Fails("fsync") ? -1 : __real_fsync(file);
}

ZORVANE_WRAPPER(int, renameat, (int from, const char* old, int to, const char* name)) {
    Armed::NoteDone('r');
    return Armed::Fails("renameat") ? -1 : __real_renameat(from, old, to, name);
}

ZORVANE_WRAPPER(DIR*, fdopendir, (int folder)) {
    return Armed::Fails("fdopendir") ? nullptr : __real_fdopendir(folder);
}

// Gives its error number as the result.
ZORVANE_WRAPPER(int, posix_fallocate, (int file, off_t from, off_t size)) {
    const int fault = Armed::FaultFor("posix_fallocate");
    return fault > 0 ? fault : __real_posix_fallocate(file, from, size);
}

#undef ZORVANE_WRAP
#undef ZORVANE_WRAP_BYTES
#undef ZORVANE_WRAPPER
// NOLINTEND(bugprone-reserved-identifier)

}  // extern "C"
