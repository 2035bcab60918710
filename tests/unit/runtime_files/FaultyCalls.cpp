#include "tests/unit/runtime_files/FaultyCalls.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <new>

namespace zorvane {
namespace {

const Fault* armed = nullptr;
int seen = 0;
bool noUnnamedFiles = false;

// What is to happen to this call: 0 nothing, else an error number or kShortCount.
int FaultFor(Call call) noexcept {
    if (!armed || armed->At != call) return 0;
    ++seen;
    const bool now = armed->FromThenOn ? seen >= armed->Nth : seen == armed->Nth;
    return now ? armed->Error : 0;
}

bool Fails(Call call) noexcept {
    const int error = FaultFor(call);
    if (error <= 0) return false;
    errno = error;
    return true;
}

}  // namespace

const char* NameOf(Call call) noexcept {
    constexpr const char* names[kCalls] = {
        "openat", "fstat",  "readlink", "pread",  "pwrite",   "posix_fallocate", "fsync",
        "fchown", "fchmod", "flock",    "linkat", "renameat", "ftruncate",       "allocation"};
    return names[static_cast<int>(call)];
}

Armed::Armed(const Fault& fault) noexcept {
    armed = &fault;
    seen = 0;
}
Armed::~Armed() {
    armed = nullptr;
}
bool Armed::Hit() const noexcept {
    return seen >= armed->Nth;
}

NoUnnamedFiles::NoUnnamedFiles() noexcept {
    noUnnamedFiles = true;
}
NoUnnamedFiles::~NoUnnamedFiles() {
    noUnnamedFiles = false;
}

}  // namespace zorvane

using zorvane::Call;

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the linker's.
int __real_openat(int directory, const char* name, int flags, mode_t mode);
int __wrap_openat(int directory, const char* name, int flags, ...);
int __wrap_openat(int directory, const char* name, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    if (zorvane::noUnnamedFiles && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return zorvane::Fails(Call::Openat) ? -1 : __real_openat(directory, name, flags, mode);
}

#define ZORVANE_WRAP(call, function, parameters, arguments)                   \
    int __real_##function parameters;                                         \
    int __wrap_##function parameters;                                         \
    int __wrap_##function parameters {                                        \
        return zorvane::Fails(Call::call) ? -1 : __real_##function arguments; \
    }
ZORVANE_WRAP(Fstat, fstat, (int file, struct stat* state), (file, state))
ZORVANE_WRAP(Fchown, fchown, (int file, uid_t user, gid_t group), (file, user, group))
ZORVANE_WRAP(Fchmod, fchmod, (int file, mode_t mode), (file, mode))
ZORVANE_WRAP(Flock, flock, (int file, int how), (file, how))
ZORVANE_WRAP(Ftruncate, ftruncate, (int file, off_t size), (file, size))
ZORVANE_WRAP(Linkat, linkat, (int from, const char* old, int to, const char* name, int flags),
             (from, old, to, name, flags))
ZORVANE_WRAP(Renameat, renameat, (int from, const char* old, int to, const char* name),
             (from, old, to, name))
#undef ZORVANE_WRAP

// While a fault is armed nothing waits for the disk: thousands of trials would take minutes.
int __real_fsync(int file);
int __wrap_fsync(int file);
int __wrap_fsync(int file) {
    if (zorvane::Fails(Call::Fsync)) return -1;
    return zorvane::armed ? 0 : __real_fsync(file);
}

ssize_t __real_readlink(const char* path, char* target, size_t size);
ssize_t __wrap_readlink(const char* path, char* target, size_t size);
ssize_t __wrap_readlink(const char* path, char* target, size_t size) {
    return zorvane::Fails(Call::Readlink) ? -1 : __real_readlink(path, target, size);
}

ssize_t __real_pread(int file, void* bytes, size_t size, off_t at);
ssize_t __wrap_pread(int file, void* bytes, size_t size, off_t at);
ssize_t __wrap_pread(int file, void* bytes, size_t size, off_t at) {
    const int fault = zorvane::FaultFor(Call::Pread);
    if (fault == zorvane::kShortCount) size = (size + 1) / 2;
    if (fault <= 0) return __real_pread(file, bytes, size, at);
    errno = fault;
    return -1;
}

ssize_t __real_pwrite(int file, const void* bytes, size_t size, off_t at);
ssize_t __wrap_pwrite(int file, const void* bytes, size_t size, off_t at);
ssize_t __wrap_pwrite(int file, const void* bytes, size_t size, off_t at) {
    const int fault = zorvane::FaultFor(Call::Pwrite);
    if (fault == zorvane::kShortCount) size = (size + 1) / 2;
    if (fault <= 0) return __real_pwrite(file, bytes, size, at);
    errno = fault;
    return -1;
}

// Gives its error number as the result.
int __real_posix_fallocate(int file, off_t from, off_t size);
int __wrap_posix_fallocate(int file, off_t from, off_t size);
int __wrap_posix_fallocate(int file, off_t from, off_t size) {
    const int fault = zorvane::FaultFor(Call::Fallocate);
    return fault > 0 ? fault : __real_posix_fallocate(file, from, size);
}
// NOLINTEND(bugprone-reserved-identifier)

}  // extern "C"

void* operator new(std::size_t size) {
    if (zorvane::FaultFor(Call::Allocate) != 0) throw std::bad_alloc();
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
