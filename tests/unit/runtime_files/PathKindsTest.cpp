// Saving to every kind of path: what is at the path afterwards, and beside it.

#include <sys/resource.h>

#include <map>

#include "tests/support/Testing.h"
#include "tests/unit/runtime_files/UnixFolder.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

// Else the number of the error; then nothing changes.
enum Outcome : int { ByNewFile = 0, InPlace = -1 };

// What stands in the folder, as Folder::Make reads it; the path below it that is saved to; and what
// becomes other or new. Where permissions are told, an ordinary user saves.
struct PathKind {
    const char* what;
    std::string before, path, changed;
    int outcome = ByNewFile;
};

const PathKind kKinds[] = {
    {"no file yet", "", "file", "file=WXYZ"},
    {"a shorter file", "file=ab", "file", "file=WXYZ"},
    {"a longer file of odd size", "file=abcdefg", "file", "file=WXYZefg"},
    {"a FIFO: nobody is waited for", "fifo|", "fifo", "", EINVAL},
    {"a link", "one/ one/file=abcdefgh one/link>file", "one/link", "one/file=WXYZefgh"},
    {"a link through other directories and links",
     "one/ one/two/ one/file=abcdefgh way>one/two one/two/link>../file start>/way/link", "start",
     "one/file=WXYZefgh"},
    {"a dangling link", "link>file", "link", "file=WXYZ"},
    {"a circle of links", "link>link", "link", "", ELOOP},
    {"a read-only file in a directory that may be written", "file=abcd file!400", "file", "",
     EACCES},
    {"a directory that may not be written", "closed/ closed/file=abcdefgh closed!500",
     "closed/file", "closed/file=WXYZefgh", InPlace},
#ifndef ZORVANE_PLAIN_UNIX
    {"a directory that may not be listed either", "closed/ closed/file=abcdefgh closed!100",
     "closed/file", "closed/file=WXYZefgh", InPlace},
#endif
    {"bytes that are no text", "\xff=abcd \xc3\xbf=other", "\xff", "\xff=WXYZ"},
    {"no file yet in a directory that may not be written", "closed/ closed!500", "closed/new", "",
     EACCES},
    {"two names: both keep their file", "file=abcdefgh name&file", "name",
     "file=WXYZefgh name=WXYZefgh", InPlace},
    {"two names of a file that must grow", "file=a name&file", "name", "file=WXYZ name=WXYZ",
     InPlace},
};

using Standing = std::map<std::string, std::string>;

Standing Look(const UnixFolder& folder) {
    Standing all;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
        const std::string name = entry.path().lexically_relative(folder.Path()).string();
        all[name] = fs::is_symlink(entry.symlink_status()) ? fs::read_symlink(entry).string()
                                                           : folder.Bytes(name).value_or("no file");
    }
    return all;
}

void Check(const PathKind& kind) {
    const UnixFolder folder;
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
        const fs::path path = folder.At(kind.path);
        const int failure = std::max(kind.outcome, 0);
        EXPECT_EQ(CheckFileWords(path).value(), failure);
        EXPECT_EQ(SaveFileWords(path, WordsOf("WXYZ")).value(), failure);
        if (failure == EINVAL || failure == ELOOP) {
            EXPECT_EQ(LoadFileWords(path).Error.value(), failure);
        }
    }
    open();
    std::istringstream changed(kind.changed);
    for (std::string entry; changed >> entry;) {
        const std::string name = entry.substr(0, entry.find('='));
        expected[name] = entry.substr(name.size() + 1);
        if (kind.outcome == InPlace) continue;
        EXPECT_NE(folder.State(name).st_ino, inodes[name]) << name;
        inodes.erase(name);
    }
    EXPECT_EQ(Look(folder), expected) << "something is other than it should, left or lost";
    for (const auto& [name, inode] : inodes) EXPECT_EQ(folder.State(name).st_ino, inode) << name;
}

TEST(SaveFileWords, EveryKindOfPathIsServedOrLeftAlone) {
    for (const PathKind& kind : kKinds) {
        SCOPED_TRACE(kind.what);
        Check(kind);
    }
}

// By itself, and by a member of its group who may write it and is not its owner.
TEST(SaveFileWords, ModeAndOwnerAreKept) {
    for (const uid_t saver : {0u, 65534u}) {
        if (saver != 0 && ::geteuid() != 0) continue;
        const UnixFolder folder;
        folder.Make("file=abcdefgh");
        { const OrdinaryUser user(folder); }
        folder.Make("file!660");
        Must(::geteuid() != 0 || ::chown(folder.At("file").c_str(), 1234, 65534) == 0);
        const struct stat before = folder.State("file");
        if (saver != 0) Must(::setegid(saver) == 0 && ::seteuid(saver) == 0);
        EXPECT_EQ(SaveFileWords(folder.At("file"), WordsOf("WXYZ")), std::error_code());
        if (saver != 0) Must(::seteuid(0) == 0 && ::setegid(0) == 0);
        const struct stat after = folder.State("file");
        EXPECT_EQ(folder.Bytes("file"), "WXYZefgh");
        EXPECT_EQ(after.st_ino != before.st_ino, saver == 0);
        EXPECT_EQ(std::tie(after.st_mode, after.st_uid, after.st_gid),
                  std::tie(before.st_mode, before.st_uid, before.st_gid));
        EXPECT_EQ(folder.Others({"file"}), std::vector<std::string>{});
    }
}

TEST(SaveFileWords, ANewFileHasTheModeThatTheUserWants) {
    const UnixFolder folder;
    const mode_t mask = ::umask(027);
    EXPECT_EQ(SaveFileWords(folder.At("file"), WordsOf("WXYZ")), std::error_code());
    ::umask(mask);
    EXPECT_EQ(folder.State("file").st_mode & 07777u, 0640u);
}

#if defined(__linux__) && !defined(ZORVANE_PLAIN_UNIX)
// An access list as the system stores it: owner, one more user, group, mask and others.
std::string AccessList(char userMay) {
    std::string list("\2\0\0\0", 4);
    for (const auto& [tag, may, who] : {std::tuple{1, '\6', -1},
                                        {2, userMay, 1234},
                                        {4, '\4', -1},
                                        {16, '\6', -1},
                                        {32, '\0', -1}})
        for (const int part : {tag, 0, int{may}, 0, who, who >> 8, who >> 16, who >> 24})
            list += static_cast<char>(part);
    return list;
}

TEST(SaveFileWords, AccessListsAndAttributesAreKept) {
    constexpr const char* kList = "system.posix_acl_access";
    const UnixFolder folder;
    folder.Make("listed=abcd plain=abcd plain!640");
    folder.SetAttribute("listed", "user.origin", "here");
    folder.SetAttribute("listed", kList, AccessList('\4'));
    // What the folder gives to new files is not for one that takes an old one's place.
    folder.SetAttribute(".", "system.posix_acl_default", AccessList('\6'));
    for (const char* name : {"listed", "plain"}) {
        const struct stat before = folder.State(name);
        EXPECT_EQ(SaveFileWords(folder.At(name), WordsOf("WXYZ")), std::error_code());
        EXPECT_NE(folder.State(name).st_ino, before.st_ino);
        EXPECT_EQ(folder.State(name).st_mode, before.st_mode);
    }
    EXPECT_EQ(folder.Attribute("listed", "user.origin"), "here");
    EXPECT_EQ(folder.Attribute("listed", kList), AccessList('\4'));
    EXPECT_EQ(folder.Attribute("plain", kList), "");
}
#endif

TEST(SaveFileWords, AFileSizeLimitNeitherEndsTheProcessNorLosesTheFile) {
    const UnixFolder folder;
    folder.Put("file", "abcd");
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit small{1000, usual.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::error_code error = SaveFileWords(folder.At("file"), WordsOf(std::string(2000, 'n')));
    EXPECT_TRUE(error == std::errc::file_too_large);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &usual), 0);
    EXPECT_EQ(folder.Bytes("file"), "abcd");
    EXPECT_EQ(folder.Others({"file"}), std::vector<std::string>{});
}

}  // namespace
}  // namespace zorvane
