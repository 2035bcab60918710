// Saving to every kind of path: what is at the path afterwards, and beside it.

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <map>
#include <sstream>

#include "tests/unit/runtime_files/Folder.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

enum Written { ByNewFile, InPlace };

// What stands in the folder, as Folder::Make reads it; the path below it that is saved to; and what
// becomes other or new. Where permissions are told, an ordinary user saves.
struct PathKind {
    const char* what;
    std::string before, path, changed;
    Written how = ByNewFile;
};

const PathKind kKinds[] = {
    {"no file yet", "", "file", "file=WXYZ"},
    {"a shorter file", "file=ab", "file", "file=WXYZ"},
    {"a longer file of odd size", "file=abcdefg", "file", "file=WXYZefg"},
    {"a directory", "inner/", "inner", ""},
    {"a FIFO: nobody is waited for", "fifo|", "fifo", ""},
    {"a link", "one/ one/file=abcdefgh one/link>file", "one/link", "one/file=WXYZefgh"},
    {"a link through other directories and links",
     "one/ one/two/ one/file=abcdefgh way>one/two one/two/link>../file start>/way/link", "start",
     "one/file=WXYZefgh"},
    {"a dangling link", "link>file", "link", "file=WXYZ"},
    {"a circle of links", "link>link", "link", ""},
    {"a read-only file in a directory that may be written", "file=abcd file!400", "file", ""},
    {"a directory that may not be written", "closed/ closed/file=abcdefgh closed!500",
     "closed/file", "closed/file=WXYZefgh", InPlace},
    {"a directory that may not be listed either", "closed/ closed/file=abcdefgh closed!100",
     "closed/file", "closed/file=WXYZefgh", InPlace},
    {"no file yet in a directory that may not be written", "closed/ closed!500", "closed/new", ""},
    {"two names: both keep their file", "file=abcdefgh name&file", "name",
     "file=WXYZefgh name=WXYZefgh", InPlace},
    {"two names of a file that must grow", "file=a name&file", "name", "file=WXYZ name=WXYZ",
     InPlace},
    {"no such directory", "", "nowhere/file", ""},
    {"a separator at the end", "file=ab", "file/", ""},
};

using Standing = std::map<std::string, std::string>;

Standing Look(const Folder& folder) {
    Standing all;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
        const std::string name = entry.path().lexically_relative(folder.Path()).string();
        all[name] = fs::is_symlink(entry.symlink_status()) ? fs::read_symlink(entry).string()
                                                           : folder.Bytes(name).value_or("no file");
    }
    return all;
}

void Check(const PathKind& kind) {
    const Folder folder;
    folder.Make(kind.before);
    const bool permissions = kind.before.find('!') != std::string::npos;
    const bool closed = kind.before.starts_with("closed");
    const auto open = [&] {
        if (closed) fs::permissions(folder.At("closed"), fs::perms::owner_all);
    };
    open();
    Standing expected = Look(folder);
    std::map<std::string, ino_t> inodes;
    for (const auto& [name, what] : expected) inodes[name] = folder.State(name).st_ino;
    if (closed) folder.Make(kind.before.substr(kind.before.rfind(' ') + 1));
    {
        std::optional<OrdinaryUser> user;
        if (permissions) user.emplace(folder);
        const bool promised = !modZorvane::CheckFileWords(folder.At(kind.path));
        modZorvane::WriteFileWords(folder.At(kind.path), WordsOf("WXYZ"));
        EXPECT_EQ(promised, !kind.changed.empty()) << "CheckFileWords";
    }
    open();
    std::istringstream changed(kind.changed);
    for (std::string entry; changed >> entry;) {
        const std::string name = entry.substr(0, entry.find('='));
        expected[name] = entry.substr(name.size() + 1);
        if (kind.how == InPlace) continue;
        EXPECT_NE(folder.State(name).st_ino, inodes[name]) << name;
        inodes.erase(name);
    }
    EXPECT_EQ(Look(folder), expected) << "something is other than it should, left or lost";
    for (const auto& [name, inode] : inodes) EXPECT_EQ(folder.State(name).st_ino, inode) << name;
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
    folder.Make("file=abcdefgh");
    { const OrdinaryUser user(folder); }
    ASSERT_EQ(::chown(folder.At("file").c_str(), 1234, 65534), 0);
    folder.Make("file!660");
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
