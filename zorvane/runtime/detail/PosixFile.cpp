#include "zorvane/runtime/detail/PosixFile.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>

namespace zorvane {
namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;  // some systems refuse 2 GiB and more
constexpr int kMostLinks = 40;                             // as many as the system itself follows

SplitPath Split(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

}  // namespace

Descriptor::~Descriptor() {
    // Once closed or interrupted the number may belong to someone else: close is never repeated.
    if (number_ >= 0) ::close(number_);
}

Descriptor OpenAt(int directory, const std::string& name, int flags, mode_t mode) noexcept {
    return Descriptor(Uninterrupted([&] {
        return ::openat(directory, name.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, mode);
    }));
}

std::size_t ReadAt(const Descriptor& file, std::span<std::byte> bytes,
                   std::size_t offset) noexcept {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = Uninterrupted([&] {
            return ::pread(file.Number(), bytes.data() + done,
                           std::min(bytes.size() - done, kMostAtOnce),
                           static_cast<off_t>(offset + done));
        });
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

bool WriteAt(const Descriptor& file, std::span<const std::byte> bytes,
             std::size_t offset) noexcept {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = Uninterrupted([&] {
            return ::pwrite(file.Number(), bytes.data() + done,
                            std::min(bytes.size() - done, kMostAtOnce),
                            static_cast<off_t>(offset + done));
        });
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

bool Reserve(const Descriptor& file, std::size_t size) noexcept {
    if (size == 0) return true;
    // Beyond this limit the system would end the process instead of failing the call.
    rlimit limit{};
    if (::getrlimit(RLIMIT_FSIZE, &limit) == 0 && size > limit.rlim_cur) return false;
    int failure = EINTR;
    while (failure == EINTR)
        failure = ::posix_fallocate(file.Number(), 0, static_cast<off_t>(size));
    return failure == 0 || failure == EOPNOTSUPP || failure == EINVAL;
}

bool Sync(const Descriptor& file) noexcept {
    if (Uninterrupted([&] { return ::fsync(file.Number()); }) == 0) return true;
    return errno == EINVAL || errno == EROFS || errno == EOPNOTSUPP;
}

SplitPath FollowLinks(const std::string& path) {
    SplitPath at = Split(path);
    std::array<char, PATH_MAX> target;
    for (int hops = 0; hops <= kMostLinks; ++hops) {
        const ssize_t length =
            ::readlink((at.Directory + "/" + at.Name).c_str(), target.data(), target.size());
        if (length < 0 || at.Name.empty()) return at;
        std::string next(target.data(), static_cast<std::size_t>(length));
        at = Split(next.front() == '/' ? next : at.Directory + "/" + next);
    }
    return {at.Directory, ""};
}

}  // namespace zorvane
