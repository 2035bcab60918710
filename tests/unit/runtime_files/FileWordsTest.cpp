#include "zorvane/runtime/FileWords.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include "tests/unit/runtime_files/Folder.h"

namespace zorvane {
namespace {

using modZorvane::ReadFileWords;
using modZorvane::WriteFileWords;

TEST(ReadFileWords, WhatIsNoFileThatCanBeReadGivesEmpty) {
    const Folder folder;
    folder.Make("file=abcd long=abcd closed=abcd closed!0 fifo| dangling>nowhere circle>circle");
    std::filesystem::resize_file(folder.At("long"), std::uintmax_t{1} << 33);
    const std::pair<const char*, Text> cases[] = {
        {"missing", folder.At("missing")},
        {"empty path", ""},
        {"directory", folder.Path()},
        {"FIFO: opened without waiting for a writer", folder.At("fifo")},
        {"link to nothing", folder.At("dangling")},
        {"circle of links", folder.At("circle")},
        {"device", "/dev/zero"},
        {"U+0000 must not cut the path short", folder.At("file") + std::string("\0x", 2)},
        {"no permission", folder.At("closed")},
        {"too long for an array", folder.At("long")},
    };
    const OrdinaryUser user(folder);
    EXPECT_FALSE(ReadFileWords(folder.At("file")).IsEmpty());
    for (const auto& [what, path] : cases) EXPECT_TRUE(ReadFileWords(path).IsEmpty()) << what;
}

TEST(WriteFileWords, OnlyAnArrayOfWordsIsWrittenAndNoWordsCutNoFile) {
    const Folder folder;
    folder.Put("file", "abcd");
    const Variant none = Array(VarType::Integer, 0, 0);
    for (const Variant& other :
         {Variant(), Variant(7), Variant(u"text"), none, Variant(Array(VarType::Long, 0, 3))}) {
        WriteFileWords(folder.At("file"), other);
    }
    WriteFileWords(folder.At("new"), none);
    EXPECT_EQ(folder.Bytes("file"), "abcd");
    EXPECT_EQ(folder.Bytes("new"), "");
}

TEST(WriteFileWords, AFileIsWrittenAgainWhereverItDiffersAndOnlyThen) {
    const Folder folder;
    std::string bytes(100'000, 'x');
    folder.Put("file", bytes + " and more");
    const struct stat before = folder.State("file");
    WriteFileWords(folder.At("file"), WordsOf(bytes));
    const struct stat after = folder.State("file");
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    bytes.back() = 'y';
    WriteFileWords(folder.At("file"), WordsOf(bytes));
    EXPECT_TRUE(folder.Bytes("file") == bytes + " and more");
}

TEST(WriteFileWords, ModeAndOwnerAreKept) {
    const Folder folder;
    folder.Make("file=abcd file!640");
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(folder.At("file").c_str(), 1234, 2345), 0);
    }
    const struct stat before = folder.State("file");
    WriteFileWords(folder.At("file"), WordsOf("WXYZ"));
    const struct stat after = folder.State("file");
    EXPECT_EQ(folder.Bytes("file"), "WXYZ");
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST(WriteFileWords, ANewFileHasTheModeThatTheUserWants) {
    const Folder folder;
    const mode_t mask = ::umask(027);
    WriteFileWords(folder.At("file"), WordsOf("WXYZ"));
    ::umask(mask);
    EXPECT_EQ(folder.State("file").st_mode & 07777u, 0640u);
}

TEST(WriteFileWords, WhatAKilledProcessLeftIsRemovedAndNothingElse) {
    const Folder folder;
    folder.Put(".zorvane-0123456789abcdef.saving", "half");
    // Other names, and one whose process lives: it holds the lock.
    const std::vector<std::string> strangers = {
        ".zorvane-0123456789abcdef.savinf", ".zorvane-0123456789abcdef.saving.bak",
        "zorvane-00123456789abcdef.saving", ".zorvane-fedcba9876543210.saving"};
    for (const std::string& name : strangers) folder.Put(name, "mine");
    const int locked = ::open(folder.At(strangers.back()).c_str(), O_RDONLY);
    ASSERT_EQ(::flock(locked, LOCK_EX), 0);
    WriteFileWords(folder.At("file"), WordsOf("WXYZ"));
    ::close(locked);
    EXPECT_EQ(folder.Others(strangers), std::vector<std::string>{"file"});
    for (const std::string& name : strangers) EXPECT_EQ(folder.Bytes(name), "mine") << name;
}

}  // namespace
}  // namespace zorvane
