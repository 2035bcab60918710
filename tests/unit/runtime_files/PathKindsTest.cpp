// Saving to every kind of path: what is at the path afterwards, and beside it.

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <functional>

#include "tests/unit/runtime_files/Folder.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

enum Written { ByNewFile, SameFile };  // the same: in place, or not at all

struct PathKind {
    const char* what;
    std::function<void(const Folder&)> prepare;
    std::string path;                     // saved to, below the folder
    std::optional<std::string> expected;  // bytes afterwards; nothing when no such file is to be
    Written how = ByNewFile;
    bool ordinaryUser = false;
    std::string leadsTo = {};  // where the path is a link: the file that is looked at
};

void MakeSocket(const Folder& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    folder.At("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
}

using Make = std::function<void(const Folder&)>;

Make File(const char* name, const char* bytes) {
    return [=](const Folder& folder) { folder.Put(name, bytes); };
}
Make Link(const char* to, const char* name) {
    return [=](const Folder& folder) { fs::create_symlink(to, folder.At(name)); };
}
// A file, and a second name for it.
Make TwoNames(const char* bytes) {
    return [=](const Folder& folder) {
        folder.Put("file", bytes);
        fs::create_hard_link(folder.At("file"), folder.At("name"));
    };
}
// A file in a directory with these permissions.
Make Closed(fs::perms permissions) {
    return [=](const Folder& folder) {
        fs::create_directory(folder.At("closed"));
        folder.Put("closed/file", "abcdefgh");
        fs::permissions(folder.At("closed"), permissions);
    };
}
void LinkThroughOthers(const Folder& folder) {
    fs::create_directories(folder.At("one/two"));
    folder.Put("one/file", "abcdefgh");
    Link("one/two", "way")(folder);
    Link("../file", "one/two/link")(folder);
    Link("file", "one/link")(folder);
    fs::create_symlink(folder.At("way/link"), folder.At("start"));
}
void MakeFifo(const Folder& folder) {
    Must(::mkfifo(folder.At("fifo").c_str(), 0600) == 0);
}
void ReadOnly(const Folder& folder) {
    folder.Put("file", "abcdefgh");
    fs::permissions(folder.At("file"), fs::perms::owner_read);
}
void Nothing(const Folder&) {}

const fs::perms kSearch = fs::perms::owner_exec;
const fs::perms kReadAndSearch = fs::perms::owner_read | kSearch;

const PathKind kKinds[] = {
    {"no file yet", Nothing, "file", "WXYZ"},
    {"a shorter file", File("file", "ab"), "file", "WXYZ"},
    {"a longer file of odd size", File("file", "abcdefg"), "file", "WXYZefg"},
    {"a directory", Closed(fs::perms::owner_all), "closed", {}, SameFile},
    {"a FIFO: nobody is waited for", MakeFifo, "fifo", {}, SameFile},
    {"a socket", MakeSocket, "socket", {}, SameFile},
    {"a link", LinkThroughOthers, "one/link", "WXYZefgh", ByNewFile, false, "one/file"},
    {"a link through other directories and links", LinkThroughOthers, "start", "WXYZefgh",
     ByNewFile, false, "one/file"},
    {"a dangling link", Link("file", "link"), "link", "WXYZ", ByNewFile, false, "file"},
    {"a circle of links", Link("link", "link"), "link", {}, SameFile},
    {"a read-only file in a directory that may be written", ReadOnly, "file", "abcdefgh", SameFile,
     true},
    {"a directory that may not be written: in place", Closed(kReadAndSearch), "closed/file",
     "WXYZefgh", SameFile, true},
    {"a directory that may not be listed either: in place", Closed(kSearch), "closed/file",
     "WXYZefgh", SameFile, true},
    {"no file yet in a directory that may not be written",
     Closed(kReadAndSearch),
     "closed/new",
     {},
     ByNewFile,
     true},
    {"two names: both keep their file", TwoNames("abcdefgh"), "name", "WXYZefgh", SameFile, false,
     "file"},
    {"two names of a file that must grow", TwoNames("a"), "name", "WXYZ", SameFile, false, "file"},
    {"no such directory", Nothing, "nowhere/file", {}},
    {"a separator at the end", File("file", "ab"), "file/", "ab", SameFile, false, "file"},
};

std::vector<std::string> Everything(const Folder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path()))
        names.push_back(entry.path().string());
    std::sort(names.begin(), names.end());
    return names;
}

void Check(const PathKind& kind) {
    const Folder folder;
    kind.prepare(folder);
    const std::string& file = kind.leadsTo.empty() ? kind.path : kind.leadsTo;
    std::vector<std::string> before = Everything(folder);
    std::error_code none;
    const bool there = fs::exists(fs::symlink_status(folder.At(file), none));
    const ino_t inode = there ? folder.State(file).st_ino : 0;
    {
        std::optional<OrdinaryUser> user;
        if (kind.ordinaryUser) user.emplace(folder);
        const bool promised = modZorvane::CanWriteFileWords(folder.At(kind.path));
        modZorvane::WriteFileWords(folder.At(kind.path), WordsOf("WXYZ"));
        const bool written = kind.expected && kind.expected->starts_with("WXYZ");
        EXPECT_EQ(promised, written) << "CanWriteFileWords";
    }
    if (fs::exists(folder.At("closed"))) fs::permissions(folder.At("closed"), fs::perms::owner_all);
    EXPECT_EQ(folder.Bytes(file), kind.expected);
    if (there) {
        EXPECT_EQ(folder.State(file).st_ino == inode, kind.how == SameFile);
    } else if (kind.expected) {
        before.push_back(folder.At(file));
        std::sort(before.begin(), before.end());
    }
    EXPECT_EQ(Everything(folder), before) << "something was left or lost";
}

TEST(WriteFileWords, EveryKindOfPathIsServedOrLeftAlone) {
    for (const PathKind& kind : kKinds) {
        SCOPED_TRACE(kind.what);
        Check(kind);
    }
}

TEST(WriteFileWords, AFileThatBelongsToAnotherKeepsItsOwner) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs root to make a file of another user";
    const Folder folder;
    folder.Put("file", "abcdefgh");
    { const OrdinaryUser user(folder); }
    ASSERT_EQ(::chown(folder.At("file").c_str(), 1234, 65534), 0);
    ASSERT_EQ(::chmod(folder.At("file").c_str(), 0660), 0);
    Must(::setegid(65534) == 0 && ::seteuid(65534) == 0);
    modZorvane::WriteFileWords(folder.At("file"), WordsOf("WXYZ"));
    Must(::seteuid(0) == 0 && ::setegid(0) == 0);
    EXPECT_EQ(folder.Bytes("file"), "WXYZefgh");
    EXPECT_EQ(folder.State("file").st_uid, 1234u);
    EXPECT_EQ(folder.Others({"file"}), std::vector<std::string>{});
}

TEST(WriteFileWords, AFullDiskLosesNothing) {
    const Folder folder;
    const std::string disk = folder.At("disk");
    fs::create_directory(disk);
    if (::mount("none", disk.c_str(), "tmpfs", 0, "size=256k") != 0)
        GTEST_SKIP() << "needs the right to mount a small disk";
    const std::string old(100'000, 'o');
    const Variant words = WordsOf(std::string(200'000, 'n'));
    folder.Put("disk/alone", old);
    modZorvane::WriteFileWords(disk + "/alone", words);
    modZorvane::WriteFileWords(disk + "/new", WordsOf(std::string(300'000, 'n')));
    fs::create_hard_link(disk + "/alone", disk + "/linked");
    modZorvane::WriteFileWords(disk + "/linked", WordsOf(std::string(300'000, 'n')));
    EXPECT_TRUE(folder.Bytes("disk/alone") == old);
    EXPECT_EQ(std::distance(fs::directory_iterator(disk), {}), 2);
    EXPECT_EQ(::umount(disk.c_str()), 0);
}

TEST(WriteFileWords, AFileSizeLimitNeitherEndsTheProcessNorLosesTheFile) {
    const Folder folder;
    folder.Put("file", "abcd");
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit small{1000, usual.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    modZorvane::WriteFileWords(folder.At("file"), WordsOf(std::string(2000, 'n')));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &usual), 0);
    EXPECT_EQ(folder.Bytes("file"), "abcd");
    EXPECT_EQ(folder.Others({"file"}), std::vector<std::string>{});
}

}  // namespace
}  // namespace zorvane
