#include "runtime/FileWords.h"

#include <gtest/gtest.h>

#include "tests/unit/runtime_files/Folder.h"

namespace zorvane {
namespace {

using modZorvane::ReadFileWords;
using modZorvane::WriteFileWords;

TEST(ReadFileWords, WordsAreCountedByTheBytesOfTheFile) {
    const struct {
        const char* what;
        std::string bytes;
        std::vector<std::int16_t> words;
    } cases[] = {
        {"empty: one word all the same", "", {0}},
        {"one byte: the low half", "\x7f", {0x7f}},
        {"two bytes, little end first", "\x34\x12", {0x1234}},
        {"three bytes: the odd one is a low half", std::string("\x34\x12\xff", 3), {0x1234, 0xff}},
        {"four bytes with the sign bit", std::string("\xff\xff\xf1\xd8", 4), {-1, -9999}},
    };
    const Folder folder;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        folder.Put("file", c.bytes);
        const Variant read = ReadFileWords(folder.At("file"));
        ASSERT_EQ(read.Type(), VarType::ArrayFlag | VarType::Integer);
        EXPECT_EQ(read.AsArray().LowerBound(), 0);
        const auto words = read.AsArray().Words();
        EXPECT_EQ(std::vector(words.begin(), words.end()), c.words);
    }
}

TEST(ReadFileWords, WhatIsNoFileGivesEmpty) {
    const Folder folder;
    folder.Put("file", "abcd");
    ASSERT_EQ(::mkfifo(folder.At("fifo").c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", folder.At("dangling"));
    std::filesystem::create_symlink("circle", folder.At("circle"));
    const struct {
        const char* what;
        Text path;
    } cases[] = {
        {"missing", folder.At("missing")},
        {"empty path", ""},
        {"directory", folder.Path()},
        {"FIFO: opened without waiting for a writer", folder.At("fifo")},
        {"link to nothing", folder.At("dangling")},
        {"circle of links", folder.At("circle")},
        {"device", "/dev/zero"},
        {"U+0000 must not cut the path short", folder.At("file") + std::string("\0x", 2)},
    };
    for (const auto& c : cases) EXPECT_TRUE(ReadFileWords(c.path).IsEmpty()) << c.what;
}

TEST(ReadFileWords, AFileWithoutReadPermissionGivesEmpty) {
    const Folder folder;
    folder.Put("file", "abcd");
    std::filesystem::permissions(folder.At("file"), std::filesystem::perms::none);
    const OrdinaryUser user(folder);
    EXPECT_TRUE(ReadFileWords(folder.At("file")).IsEmpty());
}

TEST(ReadFileWords, AFileTooLongForAnArrayGivesEmpty) {
    const Folder folder;
    folder.Put("sparse", "");
    std::filesystem::resize_file(folder.At("sparse"), std::uintmax_t{1} << 33);
    EXPECT_TRUE(ReadFileWords(folder.At("sparse")).IsEmpty());
}

TEST(WriteFileWords, WhatIsWrittenIsReadAgain) {
    const Folder folder;
    const Variant words = WordsOf(std::string("\xff\xff\xff\xff\x00\x80\xff\x7f", 8));
    WriteFileWords(folder.At("file"), words);
    EXPECT_EQ(ReadFileWords(folder.At("file")), words);
    EXPECT_EQ(folder.Bytes("file"), std::string("\xff\xff\xff\xff\x00\x80\xff\x7f", 8));
}

TEST(WriteFileWords, KeptALongerOldFileKeepsItsTail) {
    const Folder folder;
    std::string old(100, '\0');
    for (std::size_t i = 0; i < old.size(); ++i) old[i] = static_cast<char>(i);
    folder.Put("file", old);
    WriteFileWords(folder.At("file"), WordsOf("abcdefghijklmnopqrst"));
    EXPECT_EQ(folder.Bytes("file"), "abcdefghijklmnopqrst" + old.substr(20));
}

TEST(WriteFileWords, ATailLongerThanOneReadIsKeptWhole) {
    const Folder folder;
    std::string old(1'000'003, 'x');
    for (std::size_t i = 0; i < old.size(); ++i) old[i] = static_cast<char>(i * 2654435761u >> 24);
    folder.Put("file", old);
    WriteFileWords(folder.At("file"), WordsOf("abcdef"));
    EXPECT_TRUE(folder.Bytes("file") == "abcdef" + old.substr(6));
}

TEST(WriteFileWords, OnlyAnArrayOfWordsIsWritten) {
    const Folder folder;
    folder.Put("file", "abcd");
    const Variant others[] = {Variant(), Variant(7), Variant(u"text"), Array(VarType::Long, 0, 3),
                              Array(VarType::Byte, 0, 8)};
    for (const Variant& other : others) WriteFileWords(folder.At("file"), other);
    EXPECT_EQ(folder.Bytes("file"), "abcd");
}

TEST(WriteFileWords, AnArrayOfNoWordsMakesAnEmptyFileAndCutsNone) {
    const Folder folder;
    folder.Put("old", "abcd");
    WriteFileWords(folder.At("old"), Array(VarType::Integer, 0, 0));
    WriteFileWords(folder.At("new"), Array(VarType::Integer, 0, 0));
    EXPECT_EQ(folder.Bytes("old"), "abcd");
    EXPECT_EQ(folder.Bytes("new"), "");
}

TEST(WriteFileWords, AnUnchangedFileIsNotWrittenAgain) {
    const Folder folder;
    folder.Put("file", "abcdefgh and more");
    const struct stat before = folder.State("file");
    WriteFileWords(folder.At("file"), WordsOf("abcdefgh"));
    const struct stat after = folder.State("file");
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
}

TEST(WriteFileWords, ModeAndOwnerAreKept) {
    const Folder folder;
    folder.Put("file", "abcd");
    ASSERT_EQ(::chmod(folder.At("file").c_str(), 0640), 0);
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
    const std::vector<std::string> strangers = {".zorvane-0123456789abcdef.saving.bak",
                                                "zorvane-0123456789abcdef.saving", "file"};
    for (const std::string& name : strangers) folder.Put(name, "mine");
    WriteFileWords(folder.At("file"), WordsOf("WXYZ"));
    EXPECT_EQ(folder.Others(strangers), std::vector<std::string>{});
    EXPECT_TRUE(folder.Bytes(strangers[0]) && folder.Bytes(strangers[1]));
}

}  // namespace
}  // namespace zorvane
