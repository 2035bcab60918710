#include "zorvane/runtime/detail/UnixExtras.h"

#include <unistd.h>

#include <cerrno>

namespace zorvane {

std::error_code ErrorOf(int number) noexcept {
#ifdef EDQUOT
    if (number == EDQUOT) number = ENOSPC;
#endif
    return {number, std::generic_category()};
}

}  // namespace zorvane

#if defined(__linux__) && !defined(ZORVANE_PLAIN_UNIX)

#include <sys/xattr.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace zorvane {
namespace {

constexpr const char* kAccessList = "system.posix_acl_access";

// What the system says of a file's bytes does not hold for others.
bool SpeaksOfBytes(std::string_view name) noexcept {
    constexpr std::string_view kNames[] = {"security.capability", "security.evm", "security.ima"};
    return std::ranges::find(kNames, name) != std::end(kNames);
}

// What `call` fills a buffer with, when asked with none for the size first.
template <class Call>
std::error_code Fetch(Call&& call, std::string& found) {
    found.clear();
    const ssize_t size = call(nullptr, 0);
    if (size <= 0) return size == 0 ? std::error_code() : ErrorOf(errno);
    found.resize(static_cast<std::size_t>(size));
    const ssize_t got = call(found.data(), found.size());
    if (got < 0) return ErrorOf(errno);
    found.resize(static_cast<std::size_t>(got));
    return {};
}

std::error_code ValueOf(int file, const char* name, std::string& value) {
    return Fetch([&](char* room, std::size_t size) { return ::fgetxattr(file, name, room, size); },
                 value);
}

std::error_code Keep(int from, int to, const char* name) {
    std::string value, present;
    if (const std::error_code error = ValueOf(from, name, value)) return error;
    // A label that the system gives by itself need not be set, which may take special rights.
    if (!ValueOf(to, name, present) && present == value) return {};
    const int set = ::fsetxattr(to, name, value.data(), value.size(), 0);
    return set == 0 ? std::error_code() : ErrorOf(errno);
}

}  // namespace

int FlushToDisk(int file) noexcept {
    return ::fsync(file);
}

std::error_code KeepExtendedAttributes(int from, int to) {
    std::string names;
    const std::error_code listed =
        Fetch([&](char* room, std::size_t size) { return ::flistxattr(from, room, size); }, names);
    if (listed) return listed == std::errc::operation_not_supported ? std::error_code() : listed;
    // The new file may have an access list from its folder.
    bool restricted = false;
    for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
        const char* name = names.c_str() + at;
        if (SpeaksOfBytes(name)) continue;
        if (const std::error_code error = Keep(from, to, name)) return error;
        restricted = restricted || std::string_view(name) == kAccessList;
    }
    if (restricted || ::fremovexattr(to, kAccessList) == 0) return {};
    return errno == ENODATA || errno == EOPNOTSUPP ? std::error_code() : ErrorOf(errno);
}

int NameUnnamed(int file, int folder, const char* name) {
    const std::string open = "/proc/self/fd/" + std::to_string(file);
    return ::linkat(AT_FDCWD, open.c_str(), folder, name, AT_SYMLINK_FOLLOW);
}

int OpenUnnamed(int folder, mode_t mode) noexcept {
    return ::openat(folder, ".", O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
}

int ReserveSpace(int file, off_t size) noexcept {
    return ::posix_fallocate(file, 0, size);
}

}  // namespace zorvane

#else

namespace zorvane {

int FlushToDisk(int file) noexcept {
#ifdef F_FULLFSYNC
    if (::fcntl(file, F_FULLFSYNC) != -1) return 0;
#endif
    return ::fsync(file);
}

std::error_code KeepExtendedAttributes(int, int) {
    return {};
}

int NameUnnamed(int, int, const char*) {
    return errno = EOPNOTSUPP, -1;
}

int OpenUnnamed(int, mode_t) noexcept {
    return errno = EOPNOTSUPP, -1;
}

int ReserveSpace(int file, off_t size) noexcept {
#if _POSIX_ADVISORY_INFO > 0
    return ::posix_fallocate(file, 0, size);
#else
    static_cast<void>(file), static_cast<void>(size);
    return EOPNOTSUPP;
#endif
}

}  // namespace zorvane

#endif
