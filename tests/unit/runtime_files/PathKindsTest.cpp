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

enum class Written { InItsPlace, SameFile };  // by a new file, or not at all and in place

struct PathKind {
    const char* what;
    std::function<void(const Folder&)> prepare;
    std::string path;                     // saved to, below the folder
    std::string file;                     // looked at afterwards
    std::optional<std::string> expected;  // its bytes; nothing when there is to be no such file
    Written how = Written::InItsPlace;
    bool ordinaryUser = false;
};

void MakeSocket(const Folder& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    folder.At("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
}

void PutReadOnly(const Folder& folder) {
    folder.Put("file", "abcdefgh");
    fs::permissions(folder.At("file"), fs::perms::owner_read);
}

void CloseDirectory(const Folder& folder, fs::perms permissions) {
    fs::create_directory(folder.At("closed"));
    folder.Put("closed/file", "abcdefgh");
    fs::permissions(folder.At("closed"), permissions);
}

const fs::perms kReadAndSearch = fs::perms::owner_read | fs::perms::owner_exec;

const PathKind kKinds[] = {
    {"no file yet", [](const Folder&) {}, "file", "file", "WXYZ"},
    {"a shorter file", [](const Folder& f) { f.Put("file", "ab"); }, "file", "file", "WXYZ"},
    {"a longer file of odd size", [](const Folder& f) { f.Put("file", "abcdefg"); }, "file", "file",
     "WXYZefg"},
    {"a directory", [](const Folder& f) { fs::create_directory(f.At("file")); }, "file", "file",
     std::nullopt, Written::SameFile},
    {"a FIFO: nobody is waited for",
     [](const Folder& f) { ASSERT_EQ(::mkfifo(f.At("file").c_str(), 0600), 0); }, "file", "file",
     std::nullopt, Written::SameFile},
    {"a socket", MakeSocket, "socket", "socket", std::nullopt, Written::SameFile},
    {"a link: the file that it leads to",
     [](const Folder& f) {
         f.Put("file", "abcdefgh");
         fs::create_symlink("file", f.At("link"));
     },
     "link", "file", "WXYZefgh"},
    {"a link through other directories and links",
     [](const Folder& f) {
         fs::create_directories(f.At("one/two"));
         fs::create_symlink("one/two", f.At("way"));
         f.Put("one/file", "abcdefgh");
         fs::create_symlink("../file", f.At("one/two/link"));
         fs::create_symlink(f.At("way/link"), f.At("start"));
     },
     "start", "one/file", "WXYZefgh"},
    {"a dangling link: the file that it leads to",
     [](const Folder& f) { fs::create_symlink("file", f.At("link")); }, "link", "file", "WXYZ"},
    {"a circle of links",
     [](const Folder& f) {
         fs::create_symlink("link", f.At("file"));
         fs::create_symlink("file", f.At("link"));
     },
     "link", "file", std::nullopt, Written::SameFile},
    {"a read-only file in a directory that may be written", PutReadOnly, "file", "file", "abcdefgh",
     Written::SameFile, true},
    {"a directory that may not be written: in place",
     [](const Folder& f) { CloseDirectory(f, kReadAndSearch); }, "closed/file", "closed/file",
     "WXYZefgh", Written::SameFile, true},
    {"a directory that may not be listed either: in place",
     [](const Folder& f) { CloseDirectory(f, fs::perms::owner_exec); }, "closed/file",
     "closed/file", "WXYZefgh", Written::SameFile, true},
    {"no file yet in a directory that may not be written",
     [](const Folder& f) { CloseDirectory(f, kReadAndSearch); }, "closed/new", "closed/new",
     std::nullopt, Written::InItsPlace, true},
    {"a file with two names: both keep their file",
     [](const Folder& f) {
         f.Put("file", "abcdefgh");
         fs::create_hard_link(f.At("file"), f.At("name"));
     },
     "name", "file", "WXYZefgh", Written::SameFile},
    {"a file with two names that must grow",
     [](const Folder& f) {
         f.Put("file", "a");
         fs::create_hard_link(f.At("file"), f.At("name"));
     },
     "name", "file", "WXYZ", Written::SameFile},
    {"no such directory", [](const Folder&) {}, "nowhere/file", "nowhere/file", std::nullopt},
    {"a separator at the end", [](const Folder& f) { f.Put("file", "ab"); }, "file/", "file", "ab",
     Written::SameFile},
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
    std::vector<std::string> before = Everything(folder);
    std::error_code none;
    const bool there = fs::exists(fs::symlink_status(folder.At(kind.file), none));
    const ino_t inode = there ? folder.State(kind.file).st_ino : 0;
    {
        std::optional<OrdinaryUser> user;
        if (kind.ordinaryUser) user.emplace(folder);
        const bool promised = modZorvane::CanWriteFileWords(folder.At(kind.path));
        modZorvane::WriteFileWords(folder.At(kind.path), WordsOf("WXYZ"));
        const bool written = kind.expected && kind.expected->starts_with("WXYZ");
        EXPECT_EQ(promised, written) << "CanWriteFileWords";
    }
    if (fs::exists(folder.At("closed"))) fs::permissions(folder.At("closed"), fs::perms::owner_all);
    EXPECT_EQ(folder.Bytes(kind.file), kind.expected);
    if (there) {
        EXPECT_EQ(folder.State(kind.file).st_ino == inode, kind.how == Written::SameFile);
    } else if (kind.expected) {
        before.push_back(folder.At(kind.file));
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
    ASSERT_EQ(::setegid(65534), 0);
    ASSERT_EQ(::seteuid(65534), 0);
    modZorvane::WriteFileWords(folder.At("file"), WordsOf("WXYZ"));
    ASSERT_EQ(::seteuid(0), 0);
    ASSERT_EQ(::setegid(0), 0);
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
