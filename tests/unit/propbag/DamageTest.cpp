// Streams that are wrong: what is left of them. That nothing is raised and little memory taken,
// whatever the words, and what a cut leaves, is fuzz/BagStreamFuzz's.

#include "tests/support/SmallStack.h"
#include "tests/support/Testing.h"
#include "tests/unit/propbag/Words.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {
namespace {

std::string Repeated(const std::string& hex, int times) {
    std::string all;
    for (; times > 0; --times) all += hex;
    return all;
}

// Two entries with some of their words replaced.
Words Patched(std::initializer_list<std::pair<std::size_t, int>> patches) {
    Words words = TwoEntries();
    for (const auto& [at, word] : patches) words[at] = static_cast<std::int16_t>(word);
    return words;
}

// Sound but for their depth: a reader that followed them would run out of stack.
TEST(Contents_Damaged, ArraysNestedTooDeepAreDamage) {
    for (const int depth : {kStreamDepth, kStreamDepth + 1, 200'000}) {
        const std::string nest = Repeated("200C 0010 0001 0000 0000 0000 0000 0000 ", depth);
        const std::int32_t count = BagFrom(OneEntry(nest + "0003 0004 0001 0000")).Count();
        EXPECT_EQ(count, depth == kStreamDepth ? 1 : 0);
        RunOnStackOf(40 << 10, [&] {
            EXPECT_TRUE(DecodeBag(OneEntry(nest + "0003 0004 0001 0000")).Damage);
        });
    }
    // Beside one another there may be any number.
    const std::string wide =
        "200C 0010 0001 0000 0000 0000 0000 0000 200C 0010 0200 0000 0000 0000 01FF 0000 " +
        Repeated("200C 0010 0001 0000 0000 0000 0000 0000 0000 0000 ", 2 * kStreamDepth);
    EXPECT_FALSE(DecodeBag(OneEntry(wide)).Damage);
}

// Else a file of gigabytes would be read for a text that cannot be made.
TEST(Contents_Damaged, NoStreamIsLongEnoughForATextLongerThanAny) {
    for (const auto& [high, wanted] : {std::pair("3FFF", 0x3FFFFFFF + 31u), {"4000", 0u}}) {
        const auto damage = DecodeBag(OneEntry(std::string("0008 0000 FFFF ") + high)).Damage;
        EXPECT_EQ(damage ? damage->Wanted : 1, wanted) << high;
    }
}

// Damage is named by its word, so that a person can look at it; the entries before it are kept.
TEST(Contents_Damaged, TheCheckerNamesTheWordAndWhatStandsBeforeItIsRead) {
    constexpr std::size_t kSound = 999;
    Words flagless = OneEntry("6003 0004 0001 0000 0000 0000 0000 0000");
    flagless.resize(flagless.size() - 10);  // two words that are skipped lie behind the end
    struct Row {
        const char* what;
        Words words;
        std::size_t named;
        std::int32_t read = -1;  // entries
    };
    const Row table[] = {
        {"count too great", Patched({{4, 3}}), 8, 2},
        {"a Long where the names should be", Patched({{6, 3}}), 6, 0},
        {"skipped to beyond the end", flagless, kValueWord, 1},
        {"an empty bag", Hex("D8F1 D8F1 0003"), kSound},
        {"Empty, Null and a decimal",
         OneEntry("200C 0010 0003 0000 0000 0000 0002 0000 0000 0000 0001 0000 000E 0000"), kSound},
        {"first marker", Patched({{0, 0}}), 0},
        {"half a marker", Hex("D8F1 FFFF 0003"), 0},
        {"second marker", Patched({{1, 0xD8F1}}), 1},
        {"count of another type", Patched({{2, 2}}), 3},
        {"count too small: flags out of the second value", Patched({{4, 1}}), 8, 1},
        {"names of another type", Patched({{6, 0x2002}}), 7},
        {"names' element size", Patched({{7, 8}}), 7},
        {"names' count", Patched({{8, 3}}), 8},
        {"names' upper bound", Patched({{12, 3}}), 8},
        {"lower bounds", Patched({{10, 0}, {33, 0}}), 8, 0},
        {"names that do not begin at 1: there is no name 2", Patched({{10, 0}, {12, 1}}), 8, 1},
        {"a name too long", Patched({{15, 0xFFFF}}), 14},
        {"a name longer than the stream", Patched({{14, 0x7FFF}}), 14},
        {"text states a size", Patched({{42, 2}}), 42},
        {"unknown type", Patched({{47, 0x10}}), 47},
        {"size of another type", Patched({{48, 2}}), 48},
        {"a flag that is no flag", Patched({{57, 2}}), 57},
        {"no entries", Hex("FFFF FFFF 0003 0004 0000 0000"), 4},
        {"a count of 16 bits", Hex("FFFF FFFF 0002 0002 0001"), 2},
        {"a pad that is not 0", OneEntry("0011 0001 0105"), kValueWord + 2},
        {"the same in an array", OneEntry("2011 0001 0001 0000 0000 0000 0000 0000 0105"),
         kValueWord + 8},
        {"an Error array", OneEntry("200A 0004 0000 0000 0000 0000 FFFF FFFF"), kValueWord},
        {"more texts than words", OneEntry("2008 0004 0010 0000 0001 0000 0010 0000 0000 0000"),
         kValueWord + 2},
        {"more values than words", OneEntry("200C 0010 0010 0000 0001 0000 0010 0000 0000 0000"),
         kValueWord + 2},
        {"bounds turned round", OneEntry("2002 0002 0000 0000 0005 0000 0000 0000"),
         kValueWord + 4},
    };
    for (const auto& [what, words, named, read] : table) {
        const auto damage = DecodeBag(words, StreamCare::Checker).Damage;
        EXPECT_EQ(damage ? damage->Word : kSound, named) << what;
        if (read >= 0) {
            EXPECT_EQ(BagFrom(words).Count(), read) << what;
        }
    }
}

}  // namespace
}  // namespace zorvane
