// Reading and saving on Unix.
//
// Old or new, never torn: rename(2) puts one file in another's place for every process at once, and
// after a crash, on the file systems in use, the folder names one of the two. On the disk when the
// save returns: fsync(2) of the file before the rename and of the folder behind it. Owner and mode
// are kept everywhere, access lists and extended attributes where UnixExtras can. Turns are
// flock(2)'s: only processes that ask are kept out, and on some network folders nobody is.

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <memory>
#include <string>
#include <thread>

#include "zorvane/runtime/detail/SystemFile.h"
#include "zorvane/runtime/detail/TemporaryName.h"
#include "zorvane/runtime/detail/UnixExtras.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;  // some systems refuse 2 GiB and more
constexpr int kMostLinks = 40;                             // as many as the system itself follows
constexpr mode_t kPermissions = 07777;

std::error_code LastError() noexcept {
    return ErrorOf(errno);
}

std::error_code Made(std::errc failure) noexcept {
    return std::make_error_code(failure);
}

int Number(const SystemFile& file) noexcept {
    return static_cast<int>(file.Handle());
}

// Repeats a call that gives -1 while a signal interrupts it.
template <class Call>
auto Uninterrupted(Call&& call) noexcept {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

// Closed on exec, never a controlling terminal and never waiting for the other end of a pipe.
SystemFile OpenAt(int folder, const std::string& name, int flags, mode_t mode = 0) noexcept {
    return SystemFile(Uninterrupted([&] {
        return ::openat(folder, name.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, mode);
    }));
}

std::error_code StateOf(const SystemFile& file, struct stat& state) noexcept {
    if (::fstat(Number(file), &state) != 0) return LastError();
    if (S_ISREG(state.st_mode)) return {};
    return Made(S_ISDIR(state.st_mode) ? std::errc::is_a_directory : std::errc::invalid_argument);
}

// A path split where its last name begins. The folder part names links still.
struct SplitPath {
    std::string Folder;  // never empty
    std::string Name;    // empty when the path ends in a separator
};

SplitPath Split(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

// Follows links from the last name until a name that is none, present or not.
std::error_code FollowLinks(const std::string& path, SplitPath& at) {
    at = Split(path);
    std::array<char, PATH_MAX> target;
    for (int hops = 0; hops <= kMostLinks; ++hops) {
        if (at.Name.empty()) return Made(std::errc::is_a_directory);
        const ssize_t length =
            ::readlink((at.Folder + "/" + at.Name).c_str(), target.data(), target.size());
        if (length < 0) return {};
        std::string next(target.data(), static_cast<std::size_t>(length));
        at = Split(next.starts_with('/') ? next : at.Folder + "/" + next);
    }
    return Made(std::errc::too_many_symbolic_link_levels);
}

// Carries a call that reads or writes through interruptions and short counts; gives how many bytes
// were done, and the failure that ended it before the last.
template <class Call>
std::error_code InPieces(std::size_t size, std::size_t& done, Call&& call) noexcept {
    for (done = 0; done < size;) {
        const ssize_t count =
            Uninterrupted([&] { return call(done, std::min(size - done, kMostAtOnce)); });
        if (count < 0) return LastError();
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return {};
}

}  // namespace

SystemFile::~SystemFile() {
    // Once closed or interrupted the number may belong to someone else: close is never repeated.
    if (*this) ::close(Number(*this));
}

bool SystemFile::Await(Turn turn) const noexcept {
    using namespace std::chrono_literals;
    const int how = (turn == Turn::Read ? LOCK_SH : LOCK_EX) | LOCK_NB;
    for (auto waited = 0ms; waited < 2s; waited += 1ms) {
        if (Uninterrupted([&] { return ::flock(Number(*this), how); }) == 0) return true;
        if (errno != EWOULDBLOCK) return true;
        std::this_thread::sleep_for(1ms);
    }
    return false;
}

std::error_code SystemFile::ReadAt(std::span<std::byte> bytes, std::uint64_t offset,
                                   std::size_t& got) const noexcept {
    return InPieces(bytes.size(), got, [&](std::size_t done, std::size_t size) {
        return ::pread(Number(*this), bytes.data() + done, size, static_cast<off_t>(offset + done));
    });
}

std::error_code SystemFile::Reserve(std::uint64_t size) const noexcept {
    if (size == 0) return {};
    // Beyond this limit the system would end the process instead of failing the call.
    rlimit limit{};
    if (::getrlimit(RLIMIT_FSIZE, &limit) == 0 && size > limit.rlim_cur)
        return Made(std::errc::file_too_large);
    int failure = EINTR;
    while (failure == EINTR) failure = ReserveSpace(Number(*this), static_cast<off_t>(size));
    if (failure == EOPNOTSUPP || failure == EINVAL) failure = 0;
    return ErrorOf(failure);
}

std::error_code SystemFile::Sync() const noexcept {
    if (Uninterrupted([&] { return FlushToDisk(Number(*this)); }) == 0) return {};
    const bool nowhere = errno == EINVAL || errno == EROFS || errno == EOPNOTSUPP;
    return nowhere ? std::error_code() : LastError();
}

std::error_code SystemFile::Truncate(std::uint64_t size) const noexcept {
    const auto cut = [&] { return ::ftruncate(Number(*this), static_cast<off_t>(size)); };
    return Uninterrupted(cut) == 0 ? std::error_code() : LastError();
}

std::error_code SystemFile::WriteAt(std::span<const std::byte> bytes,
                                    std::uint64_t offset) const noexcept {
    std::size_t written = 0;
    const auto write = [&](std::size_t done, std::size_t size) {
        return ::pwrite(Number(*this), bytes.data() + done, size,
                        static_cast<off_t>(offset + done));
    };
    if (const std::error_code error = InPieces(bytes.size(), written, write)) return error;
    return written == bytes.size() ? std::error_code() : Made(std::errc::io_error);
}

std::error_code OpenToRead(const std::filesystem::path& path, SystemFile& file,
                           std::uint64_t& size) {
    file = OpenAt(AT_FDCWD, path.native(), O_RDONLY);
    if (!file) return LastError();
    struct stat state {};
    if (const std::error_code error = StateOf(file, state)) return error;
    (void)file.Await(SystemFile::Turn::Read);  // whoever holds it for long is no writer of ours
    if (const std::error_code error = StateOf(file, state)) return error;
    size = static_cast<std::uint64_t>(state.st_size);
    return {};
}

std::error_code SavePlace::Open(const std::filesystem::path& path) {
    SplitPath where;
    if (const std::error_code error = FollowLinks(path.native(), where)) return error;
    Folder = OpenAt(AT_FDCWD, where.Folder, O_RDONLY | O_DIRECTORY);
    // A folder that may be searched but not listed still leads to its files.
    if (!Folder) Folder = OpenAt(AT_FDCWD, where.Folder, kSearchFolder | O_DIRECTORY);
    if (!Folder) return LastError();
    Name = where.Name;
    Old = OpenAt(Number(Folder), where.Name, O_RDWR | O_NOFOLLOW);
    if (!Old) return errno == ENOENT ? std::error_code() : LastError();
    struct stat state {};
    if (const std::error_code error = StateOf(Old, state)) return error;
    OldSize = static_cast<std::uint64_t>(state.st_size);
    OldStays = state.st_nlink > 1;
    return {};
}

std::error_code SavePlace::LookAgain() {
    struct stat state {
    }, named{};
    if (const std::error_code error = StateOf(Old, state)) return error;
    OldSize = static_cast<std::uint64_t>(state.st_size);
    const bool same = ::fstatat(Number(Folder), Name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
                      named.st_dev == state.st_dev && named.st_ino == state.st_ino;
    return same ? std::error_code() : Made(std::errc::resource_unavailable_try_again);
}

std::error_code SavePlace::MayAdd() const {
    const int may = ::faccessat(Number(Folder), ".", W_OK | X_OK, AT_EACCESS);
    return may == 0 ? std::error_code() : LastError();
}

void SavePlace::RemoveLeftOvers() const {
    SystemFile listed = OpenAt(Number(Folder), ".", O_RDONLY | O_DIRECTORY);
    if (!listed) return;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::fdopendir(Number(listed)), ::closedir);
    if (!entries) return;
    (void)listed.Detach();
    while (const dirent* entry = ::readdir(entries.get())) {
        if (!IsTemporaryName(entry->d_name)) continue;
        const SystemFile left = OpenAt(Number(Folder), entry->d_name, O_RDONLY | O_NOFOLLOW);
        // A file whose lock is free belongs to nobody.
        if (left && ::flock(Number(left), LOCK_EX | LOCK_NB) == 0)
            ::unlinkat(Number(Folder), entry->d_name, 0);
    }
}

std::error_code SavePlace::Settle() const {
    return Folder.Sync();
}

NewFile::~NewFile() {
    if (!name_.empty()) ::unlinkat(Number(place_.Folder), name_.c_str(), 0);
}

std::error_code NewFile::Create(Naming naming) {
    const int folder = Number(place_.Folder);
    // Nobody else may look into a private file while it is assembled.
    const mode_t mode = place_.Old ? 0600 : 0666;
    if (naming == Naming::None) {
        file_ = SystemFile(Uninterrupted([&] { return OpenUnnamed(folder, mode); }));
        if (!file_) return Made(std::errc::operation_not_supported);
    } else {
        std::string name = TemporaryName();
        file_ = OpenAt(folder, name, O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW, mode);
        if (!file_) return LastError();
        name_ = std::move(name);
    }
    // Where there are no locks saving goes on: nobody can tell then that a file is left over.
    if (!file_.Await(SystemFile::Turn::Write))
        return Made(std::errc::resource_unavailable_try_again);
    struct stat state {};
    if (const std::error_code error = StateOf(file_, state)) return error;
    // Between opening and locking, somebody may have taken it for a left-over.
    const bool removed = !name_.empty() && state.st_nlink == 0;
    return removed ? Made(std::errc::resource_unavailable_try_again) : std::error_code();
}

std::error_code NewFile::KeepAttributes() const {
    if (!place_.Old) return {};
    struct stat old {
    }, now{};
    if (const std::error_code error = StateOf(place_.Old, old)) return error;
    if (const std::error_code error = StateOf(file_, now)) return error;
    const bool sameOwner = now.st_uid == old.st_uid && now.st_gid == old.st_gid;
    if (!sameOwner && ::fchown(Number(file_), old.st_uid, old.st_gid) != 0) return LastError();
    if (::fchmod(Number(file_), old.st_mode & kPermissions) != 0) return LastError();
    return KeepExtendedAttributes(Number(place_.Old), Number(file_));
}

std::error_code NewFile::TakePlace() {
    const int folder = Number(place_.Folder);
    if (name_.empty()) {
        std::string name = TemporaryName();
        if (NameUnnamed(Number(file_), folder, name.c_str()) != 0)
            return Made(std::errc::operation_not_supported);
        name_ = std::move(name);
    }
    if (::renameat(folder, name_.c_str(), folder, place_.Name.c_str()) != 0) {
        // The name is gone: somebody could not see the lock and took the file for a left-over.
        if (errno == ENOENT) errno = EAGAIN;
        return LastError();
    }
    name_.clear();
    return {};
}

}  // namespace zorvane
