// What holds on every system.

#include "tests/support/Testing.h"
#include "zorvane/runtime/FileWords.h"

#include "tests/unit/runtime_files/Folder.h"
#include "zorvane/runtime/detail/SystemFile.h"

namespace zorvane {
namespace {

#ifdef _WIN32
constexpr const char* kDevice = "NUL";
#else
constexpr const char* kDevice = "/dev/zero";
#endif

TEST(LoadFileWords, WhatIsNoFileSaysWhyAndReadsAsEmpty) {
    const Folder folder;
    folder.Put("file", "abcd");
    const std::tuple<const char*, std::string, std::errc> cases[] = {
        {"no such folder", folder.At("none/file"), std::errc::no_such_file_or_directory},
        {"directory", folder.Path(), std::errc::is_a_directory},
        {"no name", "", std::errc::no_such_file_or_directory},
        {"a file as a directory", folder.At("file/"), std::errc::is_a_directory},
        {"device", kDevice, std::errc::invalid_argument},
        {"U+0000 must not cut the path short", folder.At("file") + std::string("\0x", 2),
         std::errc::no_such_file_or_directory},
    };
    for (const auto& [what, path, why] : cases) {
        EXPECT_TRUE(LoadFileWords(path).Error == why) << what;
        EXPECT_TRUE(ReadFileWords(path).IsEmpty()) << what;
        EXPECT_TRUE(SaveFileWords(path, WordsOf("WXYZ")) == why) << what;
        EXPECT_TRUE(CheckFileWords(path) == why) << what;
    }
}

TEST(LoadFileWords, NoMoreIsReadThanWasAskedFor) {
    const Folder folder;
    folder.Put("file", "abcde");
    for (const auto& [most, words] :
         {std::pair{0, ""}, {2, "abcd"}, {3, "abcde"}, {9, "abcde"}, {-1, ""}}) {
        const LoadedWords loaded = LoadFileWords(folder.At("file"), most);
        EXPECT_TRUE(!loaded.Error && loaded.Words == WordsOf(words)) << most;
        EXPECT_EQ(loaded.FileBytes, 5u);
    }
    std::filesystem::resize_file(folder.At("file"), std::uintmax_t{1} << 33);
    EXPECT_TRUE(LoadFileWords(folder.At("file")).Error == std::errc::file_too_large);
    EXPECT_TRUE(LoadFileWords(folder.At("file"), 2).Words == WordsOf("abcd"));
    EXPECT_TRUE(ReadFileWords(folder.At("file")).IsEmpty());
}

// The name is of two bytes, of one and of two UTF-16 units.
TEST(SaveFileWords, TheNewWordsStandInFrontOfTheOldTailOrWithout) {
    const Folder folder;
    const std::filesystem::path path = std::filesystem::path(folder.Path()) / u"\u00FC\U0001F4BE";
    const std::tuple<const char*, bool, const char*> saves[] = {{"abcdefgh", false, "abcdefgh"},
                                                                {"WXYZ", false, "WXYZefgh"},
                                                                {"WXYZ", true, "WXYZ"},
                                                                {"0123456789", true, "0123456789"},
                                                                {"vw", true, "vw"},
                                                                {"abcdefgh", false, "abcdefgh"}};
    for (const bool inPlace : {false, true}) {
        for (const auto& [words, cut, held] : saves) {
            EXPECT_EQ(CheckFileWords(path), std::error_code());
            EXPECT_EQ(SaveFileWords(path, WordsOf(words), {.CutOldTail = cut}), std::error_code());
            EXPECT_TRUE(ReadFileWords(Text(path.u16string())) == WordsOf(held)) << words;
        }
        if (!inPlace) std::filesystem::create_hard_link(path, folder.At("name"));
    }
    EXPECT_EQ(folder.Bytes("name"), "abcdefgh") << "in place";
    std::filesystem::remove(path);
    EXPECT_EQ(folder.Others({"name"}), std::vector<std::string>());
}

TEST(WriteFileWords, OnlyAnArrayOfWordsIsWrittenAndNoWordsCutNoFile) {
    const Folder folder;
    folder.Put("file", "abcd");
    const Variant none = Array(VarType::Integer, 0, 0);
    for (const Variant& other :
         {Variant(), Variant(7), Variant(u"text"), none, Variant(Array(VarType::Long, 0, 3))}) {
        WriteFileWords(folder.At("file"), other);
    }
    EXPECT_TRUE(SaveFileWords(folder.At("file"), 7) == std::errc::invalid_argument);
    WriteFileWords(folder.At("new"), none);
    EXPECT_EQ(folder.Bytes("file"), "abcd");
    EXPECT_EQ(folder.Bytes("new"), "");
}

TEST(WriteFileWords, AFileIsWrittenAgainWhereverItDiffersAndOnlyThen) {
    const Folder folder;
    const std::string file = folder.At("file");
    std::string bytes(100'000, 'x');
    folder.Put("file", bytes + " and more");
    const auto before = std::filesystem::last_write_time(file) - std::chrono::hours(1);
    std::filesystem::last_write_time(file, before);
    WriteFileWords(file, WordsOf(bytes));
    EXPECT_EQ(std::filesystem::last_write_time(file), before);
    bytes.back() = 'y';
    WriteFileWords(file, WordsOf(bytes));
    EXPECT_TRUE(folder.Bytes("file") == bytes + " and more");
}

TEST(WriteFileWords, WhatAKilledProcessLeftIsRemovedAndNothingElse) {
    const Folder folder;
    folder.Put(".zorvane-0123456789abcdef.saving", "half");
    // Other names, and one whose process lives.
    const std::vector<std::string> strangers = {
        ".zorvane-0123456789abcdef.savinf", ".zorvane-0123456789abcdef.saving.bak",
        "zorvane-00123456789abcdef.saving", ".zorvane-fedcba9876543210.saving"};
    for (const std::string& name : strangers) folder.Put(name, "mine");
    SystemFile held;
    std::uint64_t size = 0;
    ASSERT_FALSE(OpenToRead(folder.At(strangers.back()), held, size));
    WriteFileWords(folder.At("file"), WordsOf("WXYZ"));
    held = SystemFile();
    EXPECT_EQ(folder.Others(strangers), std::vector<std::string>{"file"});
    for (const std::string& name : strangers) EXPECT_EQ(folder.Bytes(name), "mine") << name;
}

}  // namespace
}  // namespace zorvane
