// Streams that are cut off, flipped, or made to hurt: never an error, never much memory, and the
// whole entries before the damage.

#include <gtest/gtest.h>

#include <algorithm>

#include "propbag/StreamEncoder.h"
#include "propbag/StreamWords.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/support/AllocationFaults.h"
#include "tests/unit/propbag/Words.h"

namespace zorvane {
namespace {

// What decoding may allocate in all, per byte of the stream: an entry of few words has a record,
// two texts and their blocks.
constexpr std::int64_t kMemoryFactor = 16;
constexpr std::int64_t kMemoryFloor = 1024;

void AppendLong(Words& words, std::uint32_t value) {
    words.resize(words.size() + 2);
    PutLong(words.data() + words.size() - 2, value);
}

// Assigns the words and checks the promises that hold for any words at all.
void AssignHostile(ZVPropertyBag& bag, const Words& words, const std::string& what) {
    const Array contents = Array::OfWords(words);
    const std::int64_t before = AllocatedBytes();
    EXPECT_NO_THROW(bag.SetContents(contents)) << what;
    const std::int64_t taken = AllocatedBytes() - before;
    EXPECT_LE(taken, kMemoryFloor + kMemoryFactor * std::ssize(words) * 2) << what;
    for (std::int32_t i = 1; i <= bag.Count(); ++i) {
        EXPECT_NO_THROW(static_cast<void>(bag.Item(i))) << what;
    }
}

Words SampleStream(int which) {
    ZVPropertyBag bag;
    if (which == 0) return TwoEntries();
    for (int i = 0; i < 12; ++i) bag.WriteProperty("Name" + std::to_string(i), i * 1000);
    bag.WriteProperty(u"Text", std::u16string(40, u'x'));
    Array values(VarType::Variant, 0, 4);
    values.SetAt(0, u"inner");
    values.SetAt(1, values);
    values.SetAt(2, 1.5);
    bag.WriteProperty(u"Values", values);
    bag.WriteProperty(u"Bytes", Array(VarType::Byte, 0, 33));
    if (which == 2) {
        ZVPropertyBag outer;
        for (const char16_t* name : {u"One", u"Two"}) outer.WriteProperty(name, bag.Contents());
        outer.WriteProperty(u"Texts", Array(VarType::String, 1, 9));
        return WordsOf(outer);
    }
    return WordsOf(bag);
}

TEST(Contents_Damaged, EveryPrefixKeepsTheWholeEntriesBeforeTheCut) {
    for (int sample = 0; sample < 3; ++sample) {
        const Words whole = SampleStream(sample);
        const BagReading reading = DecodeBag(whole);
        ASSERT_FALSE(reading.Damage);
        ZVPropertyBag bag;
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string what =
                "sample " + std::to_string(sample) + " cut at word " + std::to_string(length);
            const Words cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            AssignHostile(bag, cut, what);
            // An entry is whole when the next one's value, or the settings, could begin at the cut.
            const auto starts = std::span(reading.ValueWords);
            std::size_t expected = 0;
            for (std::size_t i = 0; i < starts.size(); ++i) {
                const std::size_t end = starts[i] + StreamWordsOf(reading.State.Entries[i].Value);
                if (end <= length) expected = i + 1;
            }
            ASSERT_EQ(static_cast<std::size_t>(bag.Count()), expected) << what;
            for (std::size_t i = 0; i < expected; ++i) {
                const auto position = static_cast<std::int32_t>(i + 1);
                ASSERT_EQ(bag.Item(position), reading.State.Entries[i].Value) << what;
                ASSERT_EQ(bag.Key(position), reading.State.Entries[i].Name) << what;
            }
            EXPECT_TRUE(DecodeBag(cut).Damage.has_value()) << what;
        }
    }
}

TEST(Contents_Damaged, EverySingleBitFlipIsSurvived) {
    const Words whole = TwoEntries();
    ZVPropertyBag bag;
    int unharmed = 0;
    for (std::size_t word = 0; word < whole.size(); ++word) {
        for (unsigned bit = 0; bit < 16; ++bit) {
            Words flipped = whole;
            flipped[word] =
                static_cast<std::int16_t>(static_cast<std::uint16_t>(flipped[word]) ^ (1u << bit));
            const std::string what = "word " + std::to_string(word) + " bit " + std::to_string(bit);
            AssignHostile(bag, flipped, what);
            EXPECT_LE(bag.Count(), 2) << what;
            // Whatever was understood is written and read again as it is.
            ZVPropertyBag again;
            again.SetContents(bag.Contents());
            EXPECT_EQ(again.Count(), bag.Count()) << what;
            if (bag.Count() == 2 && bag.Item(1) == Variant(u"Hi") && bag.Item(2) == Variant(1200)) {
                ++unharmed;
            }
        }
    }
    // Names, element sizes of texts and settings may flip and leave both values; no more than
    // those.
    EXPECT_GT(unharmed, 200);
    EXPECT_LT(unharmed, 700);
}

TEST(Contents_Damaged, CountsLengthsAndBoundsUpTo32BitsTakeNoMemory) {
    const std::uint32_t sizes[] = {3,          5,          0x7FFF,     0x10000,   0x7FFFFFFE,
                                   0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};
    ZVPropertyBag bag;
    for (const std::uint32_t size : sizes) {
        const std::string what = "size " + std::to_string(size);
        Words text = Hex("0008 0000");
        AppendLong(text, size);
        AssignHostile(bag, OneEntry(text), "text of " + what);
        Words count = TwoEntries();
        PutLong(count.data() + 4, size);
        AssignHostile(bag, count, "entries: " + what);
        for (const unsigned element : {2u, 3u, 5u, 8u, 12u, 17u}) {
            for (const unsigned width : {0u, 1u, 4u, 8u, 16u, 0xFFFFu}) {
                for (const std::uint32_t upper : {size - 1, 0u, 0x7FFFFFFFu, 0x80000000u}) {
                    Words array{static_cast<std::int16_t>(0x2000 + element),
                                static_cast<std::int16_t>(width)};
                    AppendLong(array, size);
                    AppendLong(array, 0);
                    AppendLong(array, upper);
                    AssignHostile(bag, OneEntry(array), "array of " + what);
                    array[4] = 0;  // a lower bound as low as can be
                    array[5] = static_cast<std::int16_t>(0x8000);
                    AssignHostile(bag, OneEntry(array), "array from far below, " + what);
                }
            }
        }
    }
}

// Every level of nested arrays claims all words that are left: together they must not claim more.
TEST(Contents_Damaged, NestedArraysCannotClaimTheSameWordsTwice) {
    constexpr std::size_t kWords = 100'000;
    for (const int depth : {1, 200, kStreamDepth, kStreamDepth + 5, 5000}) {
        Words value;
        for (int level = 0; level < depth; ++level) {
            const auto left = static_cast<std::uint32_t>((kWords - value.size() - 8) / 2 - 10);
            value.insert(value.end(), {0x200C, 16});
            AppendLong(value, left);
            AppendLong(value, 0);
            AppendLong(value, left - 1);
        }
        value.resize(kWords);
        ZVPropertyBag bag;
        AssignHostile(bag, OneEntry(value), "depth " + std::to_string(depth));
    }
}

// Sound but for their depth: a reader that followed them would run out of stack.
TEST(Contents_Damaged, ArraysNestedTooDeepAreDamage) {
    for (const int depth : {kStreamDepth, kStreamDepth + 1, 200'000}) {
        const Words level = Hex("200C 0010 0001 0000 0000 0000 0000 0000");
        Words value;
        for (int i = 0; i < depth; ++i) value.insert(value.end(), level.begin(), level.end());
        value.insert(value.end(), {3, 4, 1, 0});
        ZVPropertyBag bag;
        AssignHostile(bag, OneEntry(value), "depth " + std::to_string(depth));
        EXPECT_EQ(bag.Count(), depth == kStreamDepth ? 1 : 0);
    }
    // Beside one another there may be any number.
    Array wide(VarType::Variant, 0, 2 * kStreamDepth);
    for (std::int32_t i = 0; i < wide.Count(); ++i) wide.SetAt(i, Array(VarType::Variant, 0, 1));
    ZVPropertyBag bag;
    bag.WriteProperty(u"V", wide);
    ZVPropertyBag read;
    read.SetContents(bag.Contents());
    EXPECT_EQ(read.Item(u"V"), Variant(wide));
}

TEST(Contents_Damaged, BoundsWithoutDataCannotClaimMemoryAgainAndAgain) {
    Words value = Hex("200C 0010 4E20 0000 0000 0000 4E1F 0000");  // 20,000 values
    for (int i = 0; i < 20'000; ++i) {
        // No elements stated, but bounds that hold 1,000.
        const Words empty = Hex("200C 0010 0000 0000 0000 0000 03E7 0000");
        value.insert(value.end(), empty.begin(), empty.end());
    }
    ZVPropertyBag bag;
    AssignHostile(bag, OneEntry(value), "values");
    for (std::size_t at = 8; at < value.size(); at += 8) value[at] = 0x2005;  // the same as Doubles
    AssignHostile(bag, OneEntry(value), "numbers");
}

TEST(Contents_Damaged, ManySmallEntriesTakeASmallMultipleOfTheirWords) {
    ZVPropertyBag small;
    for (int i = 0; i < 5000; ++i) small.Add(Variant(), "n" + std::to_string(i));
    ZVPropertyBag bag;
    AssignHostile(bag, WordsOf(small), "small entries");
    EXPECT_EQ(bag.Count(), 5000);
}

TEST(Contents_Damaged, WhatFollowsFromAWrongCountOrNamesKeepsTheEntriesBefore) {
    Words count = TwoEntries();
    count[4] = 3;
    Words fewer = TwoEntries();
    fewer[4] = 1;  // the flags are then read out of the second value
    Words lower = TwoEntries();
    lower[10] = 0;  // names from 0 to 1: there is no name 2
    lower[12] = 1;
    Words noArray = TwoEntries();
    noArray[6] = 3;  // a Long where the names should be
    Words flagless = OneEntry(Hex("6003 0004 0001 0000 0000 0000 0000 0000"));
    flagless.resize(flagless.size() - 10);  // two words that are skipped lie behind the end
    const struct {
        const char* what;
        const Words& words;
        std::int32_t count;
    } table[] = {{"more than there are", count, 2},
                 {"fewer", fewer, 1},
                 {"other bounds", lower, 1},
                 {"no names", noArray, 0},
                 {"skipped to beyond the end", flagless, 1}};
    for (const auto& row : table) {
        ZVPropertyBag bag;
        AssignHostile(bag, row.words, row.what);
        EXPECT_EQ(bag.Count(), row.count) << row.what;
    }
}

// Damage is named by its word, so that a person can look at it.
TEST(Contents_Damaged, TheCheckerNamesTheWord) {
    const struct {
        const char* what;
        std::size_t word;
        std::uint16_t put;
        std::size_t named;
    } table[] = {
        {"first marker", 0, 0, 0},
        {"second marker", 1, 0xD8F1, 1},
        {"count of another type", 2, 0x0002, 3},
        {"count too small", 4, 1, 8},
        {"names of another type", 6, 0x2002, 7},
        {"names' element size", 7, 8, 7},
        {"names' count", 8, 3, 8},
        {"names' upper bound", 12, 3, 8},
        {"a name too long", 15, 0xFFFF, 14},
        {"text states a size", 42, 2, 42},
        {"Long becomes Single", 47, 4, 0},  // sound, only different
        {"unknown type", 47, 0x0010, 47},
        {"size of another type", 48, 2, 48},
        {"a flag that is no flag", 57, 2, 57},
    };
    for (const auto& row : table) {
        Words words = TwoEntries();
        words[row.word] = static_cast<std::int16_t>(row.put);
        const BagReading reading = DecodeBag(words, StreamCare::Checker);
        if (row.named == 0 && row.word != 0) {
            EXPECT_FALSE(reading.Damage) << row.what;
            continue;
        }
        ASSERT_TRUE(reading.Damage) << row.what;
        EXPECT_EQ(reading.Damage->Word, row.named) << row.what << ": " << reading.Damage->what();
    }
    Words otherBounds = TwoEntries();
    otherBounds[10] = 0;
    otherBounds[12] = 1;
    const struct {
        const char* what;
        Words words;
        std::size_t named;
    } others[] = {
        {"names that do not begin at 1", otherBounds, 8},
        {"no entries", Hex("FFFF FFFF 0003 0004 0000 0000"), 4},
        {"a count of 16 bits", Hex("FFFF FFFF 0002 0002 0001"), 2},
        {"a pad that is not 0", OneEntry(Hex("0011 0001 0105")), kValueWord + 2},
        {"the same in an array", OneEntry(Hex("2011 0001 0001 0000 0000 0000 0000 0000 0105")),
         kValueWord + 8},
        {"an Error array", OneEntry(Hex("200A 0004 0000 0000 0000 0000 FFFF FFFF")), kValueWord},
        {"bounds turned round", OneEntry(Hex("2002 0002 0000 0000 0005 0000 0000 0000")),
         kValueWord + 4},
    };
    for (const auto& row : others) {
        const BagReading reading = DecodeBag(row.words, StreamCare::Checker);
        ASSERT_TRUE(reading.Damage) << row.what;
        EXPECT_EQ(reading.Damage->Word, row.named) << row.what << ": " << reading.Damage->what();
    }
    EXPECT_FALSE(DecodeBag(TwoEntries(), StreamCare::Checker).Damage);
    EXPECT_FALSE(DecodeBag(Hex("D8F1 D8F1 0003"), StreamCare::Checker).Damage);
    EXPECT_EQ(DecodeBag(Hex("D8F1 FFFF 0003"), StreamCare::Checker).Damage.value().Word, 0u);
}

}  // namespace
}  // namespace zorvane
