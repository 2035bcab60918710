#include "zorvane/runtime/detail/FileReplacement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <random>
#include <string_view>
#include <vector>

#include "zorvane/runtime/detail/PosixFile.h"

namespace zorvane {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t kChunk = 64 * 1024;
// The words that tell whether a stream follows; written last where a file is written in place.
constexpr std::size_t kMarker = 4;
constexpr mode_t kPermissions = 07777;

constexpr std::string_view kTemporaryStart = ".zorvane-";
constexpr std::string_view kTemporaryEnd = ".saving";
constexpr std::size_t kTemporaryDigits = 16;

// Nobody can foresee the name and put a file or a link in its place.
std::string TemporaryName() {
    std::random_device random;
    const std::uint64_t number = std::uint64_t{random()} << 32 | random();
    std::array<char, kTemporaryDigits + 1> digits;
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return std::string(kTemporaryStart) + digits.data() + std::string(kTemporaryEnd);
}

bool IsTemporaryName(std::string_view name) noexcept {
    return name.size() == kTemporaryStart.size() + kTemporaryDigits + kTemporaryEnd.size() &&
           name.starts_with(kTemporaryStart) && name.ends_with(kTemporaryEnd);
}

// The file that is about to be saved, opened before anything is decided.
struct Target {
    Descriptor Directory;
    std::string Name;
    Descriptor Old;        // nothing when there is no such file yet
    struct stat State {};  // of Old

    [[nodiscard]] std::size_t OldSize() const noexcept {
        return static_cast<std::size_t>(State.st_size);
    }
};

std::optional<Target> OpenTarget(const std::string& path) {
    SplitPath where = FollowLinks(path);
    if (where.Name.empty()) return {};
    Target target{
        OpenAt(AT_FDCWD, where.Directory, O_RDONLY | O_DIRECTORY), std::move(where.Name), {}};
    // A directory that may be searched but not listed still leads to its files.
    if (!target.Directory)
        target.Directory = OpenAt(AT_FDCWD, where.Directory, O_PATH | O_DIRECTORY);
    if (!target.Directory) return {};
    target.Old = OpenAt(target.Directory.Number(), target.Name, O_RDWR | O_NOFOLLOW);
    if (!target.Old) {
        if (errno != ENOENT) return {};
        return target;
    }
    if (::fstat(target.Old.Number(), &target.State) != 0 || !S_ISREG(target.State.st_mode))
        return {};
    return target;
}

bool BeginsWith(const Target& target, Bytes bytes) {
    if (target.OldSize() < bytes.size()) return false;
    std::vector<std::byte> chunk(std::min(kChunk, bytes.size()));
    for (std::size_t at = 0; at < bytes.size(); at += chunk.size()) {
        const Bytes wanted = bytes.subspan(at, std::min(chunk.size(), bytes.size() - at));
        const std::span<std::byte> found = std::span(chunk).first(wanted.size());
        if (ReadAt(target.Old, found, at) != found.size()) return false;
        if (!std::ranges::equal(found, wanted)) return false;
    }
    return true;
}

// What killed processes left in the directory. A file whose lock is free belongs to nobody.
void RemoveLeftOvers(const Descriptor& directory) {
    Descriptor listed = OpenAt(directory.Number(), ".", O_RDONLY | O_DIRECTORY);
    if (!listed) return;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::fdopendir(listed.Number()), ::closedir);
    if (!entries) return;
    (void)listed.Detach();
    while (const dirent* entry = ::readdir(entries.get())) {
        if (!IsTemporaryName(entry->d_name)) continue;
        const Descriptor left = OpenAt(directory.Number(), entry->d_name, O_RDONLY | O_NOFOLLOW);
        if (left && ::flock(left.Number(), LOCK_EX | LOCK_NB) == 0)
            ::unlinkat(directory.Number(), entry->d_name, 0);
    }
}

enum class Outcome { Saved, Failed, NotPossible };

// A failure that speaks of the place and not of the disk: another way of saving may work.
Outcome FailedWith(int reason) noexcept {
    switch (reason) {
        case EACCES:
        case EBUSY:  // the name is a mount point
        case EPERM:
        case EXDEV:
            return Outcome::NotPossible;
        default:
            return Outcome::Failed;
    }
}

// The new file while it is assembled: without a name where the system can do that, so that a killed
// process leaves nothing, else under a temporary one. Gone at the end of its life unless it has
// taken the target's place. Locked as long as it is open, so that nobody takes it for a left-over.
class Replacement {
  public:
    explicit Replacement(const Target& target) noexcept : target_(target) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (!name_.empty()) ::unlinkat(target_.Directory.Number(), name_.c_str(), 0);
    }

    Outcome CreateUnnamed() {
        file_ = OpenAt(target_.Directory.Number(), ".", O_TMPFILE | O_RDWR, Mode());
        return file_ ? Lock() : Outcome::NotPossible;
    }
    Outcome CreateNamed() {
        std::string name = TemporaryName();
        file_ = OpenAt(target_.Directory.Number(), name, O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW,
                       Mode());
        if (!file_) return FailedWith(errno);
        name_ = std::move(name);
        return Lock();
    }
    Outcome Assemble(Bytes bytes) {
        if (const Outcome kept = KeepOwnerAndMode(); kept != Outcome::Saved) return kept;
        const std::size_t size = std::max(bytes.size(), target_.OldSize());
        const bool done = Reserve(file_, size) && WriteAt(file_, bytes, 0) &&
                          CopyTail(bytes.size()) && Sync(file_);
        return done ? Outcome::Saved : Outcome::Failed;
    }
    Outcome TakePlace() {
        const int directory = target_.Directory.Number();
        if (name_.empty()) {
            std::string name = TemporaryName();
            const std::string open = "/proc/self/fd/" + std::to_string(file_.Number());
            if (::linkat(AT_FDCWD, open.c_str(), directory, name.c_str(), AT_SYMLINK_FOLLOW) != 0)
                return Outcome::NotPossible;
            name_ = std::move(name);
        }
        if (::renameat(directory, name_.c_str(), directory, target_.Name.c_str()) != 0)
            return FailedWith(errno);
        name_.clear();
        (void)Sync(target_.Directory);  // too late to go back: the new file is there
        return Outcome::Saved;
    }

  private:
    [[nodiscard]] mode_t Mode() const noexcept { return target_.Old ? 0600 : 0666; }
    Outcome Lock() const noexcept {
        // Without a lock saving goes on: at worst another process removes the file too early, and
        // taking the place fails.
        (void)::flock(file_.Number(), LOCK_EX | LOCK_NB);
        return Outcome::Saved;
    }
    Outcome KeepOwnerAndMode() const noexcept {
        if (!target_.Old) return Outcome::Saved;
        const struct stat& old = target_.State;
        struct stat now {};
        if (::fstat(file_.Number(), &now) != 0) return Outcome::Failed;
        const bool sameOwner = now.st_uid == old.st_uid && now.st_gid == old.st_gid;
        if (!sameOwner && ::fchown(file_.Number(), old.st_uid, old.st_gid) != 0)
            return FailedWith(errno);
        if (::fchmod(file_.Number(), old.st_mode & kPermissions) != 0) return FailedWith(errno);
        return Outcome::Saved;
    }
    bool CopyTail(std::size_t from) const {
        if (target_.OldSize() <= from) return true;
        std::vector<std::byte> chunk(std::min(kChunk, target_.OldSize() - from));
        for (std::size_t at = from; at < target_.OldSize(); at += chunk.size()) {
            const std::span<std::byte> piece =
                std::span(chunk).first(std::min(chunk.size(), target_.OldSize() - at));
            if (ReadAt(target_.Old, piece, at) != piece.size()) return false;
            if (!WriteAt(file_, piece, at)) return false;
        }
        return true;
    }

    const Target& target_;
    Descriptor file_;
    std::string name_;  // in the target's directory; empty while there is none
};

Outcome Replace(const Target& target, Bytes bytes, Outcome (Replacement::*create)()) {
    Replacement replacement(target);
    if (const Outcome made = (replacement.*create)(); made != Outcome::Saved) return made;
    if (const Outcome full = replacement.Assemble(bytes); full != Outcome::Saved) return full;
    return replacement.TakePlace();
}

// Until the last write the file begins with zeros: what a crash leaves is no stream.
bool WriteMarkerLast(const Descriptor& file, Bytes bytes) noexcept {
    constexpr std::array<std::byte, kMarker> kNothing{};
    const std::size_t marker = std::min(kMarker, bytes.size());
    return WriteAt(file, Bytes(kNothing).first(marker), 0) && Sync(file) &&
           WriteAt(file, bytes.subspan(marker), marker) && Sync(file) &&
           WriteAt(file, bytes.first(marker), 0) && Sync(file);
}

void WriteInPlace(const Target& target, Bytes bytes) {
    std::vector<std::byte> before(std::min(bytes.size(), target.OldSize()));
    if (ReadAt(target.Old, before, 0) != before.size()) return;
    if (Reserve(target.Old, bytes.size())) {
        if (WriteMarkerLast(target.Old, bytes)) return;
        (void)WriteMarkerLast(target.Old, before);
    }
    if (target.OldSize() < bytes.size())
        (void)Uninterrupted([&] { return ::ftruncate(target.Old.Number(), target.State.st_size); });
    (void)Sync(target.Old);
}

}  // namespace

bool MaySaveOverFile(const std::string& path) {
    const std::optional<Target> target = OpenTarget(path);
    if (!target) return false;
    if (target->Old) return true;
    return ::faccessat(target->Directory.Number(), ".", W_OK | X_OK, AT_EACCESS) == 0;
}

void SaveOverFile(const std::string& path, std::span<const std::byte> bytes) {
    const std::optional<Target> target = OpenTarget(path);
    if (!target) return;
    RemoveLeftOvers(target->Directory);
    if (target->Old && BeginsWith(*target, bytes)) return;
    if (target->State.st_nlink <= 1) {  // other names are to see the new words too
        Outcome outcome = Replace(*target, bytes, &Replacement::CreateUnnamed);
        if (outcome == Outcome::NotPossible)
            outcome = Replace(*target, bytes, &Replacement::CreateNamed);
        if (outcome != Outcome::NotPossible) return;
    }
    if (target->Old) WriteInPlace(*target, bytes);
}

}  // namespace zorvane
