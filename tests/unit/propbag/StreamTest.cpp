// What a bag's stream looks like, word by word, and what comes back out of it.

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "platform/Error.h"
#include "propbag/StreamEncoder.h"
#include "propbag/StreamWords.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"
#include "tests/unit/propbag/Words.h"

namespace zorvane {
namespace {

template <class... Values>
Array ArrayOf(VarType element, std::int32_t lower, const Values&... values) {
    Array array(element, lower, sizeof...(values));
    std::int64_t at = lower;
    (array.SetAt(static_cast<std::int32_t>(at++), values), ...);
    return array;
}

Variant TheFloat(float value) {
    return value;
}

// The value after one trip through the words of a bag.
Variant RoundTrip(const Variant& value) {
    ZVPropertyBag bag;
    bag.Add(value, u"V");
    ZVPropertyBag read;
    read.SetContents(bag.Contents());
    return read.Count() == 1 ? read.Item(1) : Variant(u"nothing came back");
}

TEST(Contents_Read, TheBagOfTwoEntriesIsThese61Words) {
    ZVPropertyBag bag;
    bag.WriteProperty(u"Left", 1200);
    bag.WriteProperty(u"Caption", u"Hi");
    EXPECT_EQ(ToHex(bag.Contents().Words()), ToHex(TwoEntries()));
    EXPECT_EQ(TwoEntries().size(), 61u);
    EXPECT_EQ(bag.Contents().LowerBound(), 0);
}

TEST(Contents_Read, AnEmptyBagIs16WordsThatSayNothingOfItsSettings) {
    ZVPropertyBag bag;
    EXPECT_EQ(ToHex(bag.Contents().Words()),
              ToHex(Hex("D8F1 D8F1 0003 0004 0000 0000 0003 0004 0010 0000 000B 0002 FFFF "
                        "000B 0002 FFFF")));
    bag.SetGranularity(77);
    ZVPropertyBag read;
    read.SetContents(bag.Contents());
    EXPECT_EQ(read.Granularity(), 16);
}

TEST(Contents_Assign, TheBagOfTwoEntriesComesBackWithItsSettings) {
    Words words = TwoEntries();
    words[53] = 40;  // granularity
    words[57] = 0;   // sorted
    ZVPropertyBag bag;
    bag.WriteProperty(u"Old", 1);
    bag.SetContents(Array::OfWords(words));
    ASSERT_EQ(bag.Count(), 2);
    EXPECT_EQ(bag.Key(1), u"Caption");
    EXPECT_EQ(bag.Item(std::int16_t{1}), Variant(u"Hi"));
    EXPECT_EQ(bag.Item(2), Variant(1200));
    EXPECT_EQ(bag.Granularity(), 40);
    EXPECT_FALSE(bag.Sorted());
    EXPECT_FALSE(bag.Changed());
    EXPECT_EQ(ToHex(bag.Contents().Words()), ToHex(words));
}

TEST(Contents_Assign, AnOlderLongerTailIsNotLookedAt) {
    Words words = TwoEntries();
    words.insert(words.end(), {-1, -1, 3, 4, 7, 0, 0x2008});
    ZVPropertyBag bag;
    bag.SetContents(Array::OfWords(words));
    EXPECT_EQ(ToHex(bag.Contents().Words()), ToHex(TwoEntries()));
}

TEST(Contents_Assign, WhatIsNoStreamLeavesTheBagCleared) {
    const struct {
        const char* what;
        Variant value;
    } table[] = {
        {"Empty, as an absent file reads", Variant()},
        {"a number", 5},
        {"a text", u"\xFFFF\xFFFF"},
        {"an array of Longs", Array(VarType::Long, 0, 80)},
        {"an array of Booleans", ArrayOf(VarType::Boolean, 0, true, true, true)},
        {"no words", Array(VarType::Integer, 0, 0)},
        {"two words", Array::OfWords(Hex("FFFF FFFF"))},
        {"three words without marker", Array::OfWords(Hex("0001 0002 0003"))},
        {"half a marker", Array::OfWords(Hex("FFFF D8F1 0003 0004 0001 0000"))},
        {"the marker of an empty bag", Array::OfWords(Hex("D8F1 D8F1 0003"))},
        {"a negative count", Array::OfWords(Hex("FFFF FFFF 0003 0004 FFFF FFFF"))},
    };
    for (const auto& row : table) {
        ZVPropertyBag bag;
        bag.WriteProperty(u"Old", 1);
        bag.SetGranularity(99);
        bag.SetContents(row.value);
        EXPECT_EQ(bag.Count(), 0) << row.what;
        EXPECT_EQ(bag.Granularity(), 16) << row.what;
        EXPECT_TRUE(bag.Sorted()) << row.what;
        EXPECT_FALSE(bag.Changed()) << row.what;
    }
}

TEST(Contents_Assign, ArraysWithAnotherLowerBoundAreReadFromTheirFirstWord) {
    const Words words = TwoEntries();
    Array array(VarType::Integer, 5, static_cast<std::int32_t>(words.size()));
    std::ranges::copy(words, array.MutableElements<std::int16_t>().begin());
    ZVPropertyBag bag;
    bag.SetContents(array);
    EXPECT_EQ(bag.Count(), 2);
}

TEST(Contents_Assign, CountAndSettingsConvertFromWhateverTypeTheyHave) {
    // The count as the text "1", granularity 2.5 as a Double, the flags as the text "False" and 7.
    Words words = Hex("FFFF FFFF 0008 0000 0001 0000 0031");
    const Words rest = OneEntry(Hex("0002 0002 0005"));
    words.insert(words.end(), rest.begin() + 6, rest.end() - 10);
    const Words settings =
        Hex("0005 0008 0000 0000 0000 4004 "
            "0008 0000 0005 0000 0046 0061 006C 0073 0065 0003 0004 0007 0000");
    words.insert(words.end(), settings.begin(), settings.end());
    ZVPropertyBag bag;
    bag.SetContents(Array::OfWords(words));
    ASSERT_EQ(bag.Count(), 1);
    EXPECT_EQ(bag.Granularity(), 2);
    EXPECT_FALSE(bag.Sorted());
}

TEST(Stream, EveryTypeHasItsWords) {
    const struct {
        const char* what;
        Variant value;
        const char* words;
    } table[] = {
        {"Empty", Variant(), "0000 0000"},
        {"Null", Variant::Null(), "0001 0000"},
        {"16-bit", std::int16_t{-2}, "0002 0002 FFFE"},
        {"32-bit", std::int32_t{-2}, "0003 0004 FFFE FFFF"},
        {"single", TheFloat(1.5F), "0004 0004 0000 3FC0"},
        {"double", 1.5, "0005 0008 0000 0000 0000 3FF8"},
        {"currency", Variant::FromCurrency(0x0102030405060708), "0006 0008 0708 0506 0304 0102"},
        {"date", Variant::FromDate(-1), "0007 0008 0000 0000 0000 BFF0"},
        {"text", u"a\xD800", "0008 0000 0002 0000 0061 D800"},
        {"empty text", Text(), "0008 0000 0000 0000"},
        {"no object", Ref<Object>(), "0000 0000"},
        {"object", MakeObject<CountedObject>(), "0000 0000"},
        {"error code", Variant::FromError(-5), "000A 0004 FFFB FFFF"},
        {"true", true, "000B 0002 FFFF"},
        {"false", false, "000B 0002 0000"},
        {"decimal", Variant::FromDecimal({.Low = 5}), "000E 0000"},
        {"byte", std::uint8_t{0xFE}, "0011 0001 00FE"},
        {"16-bit array", ArrayOf(VarType::Integer, -1, 1, -1),
         "2002 0002 0002 0000 FFFF FFFF 0000 0000 0001 FFFF"},
        {"no elements", Array(VarType::Integer, 0, 0), "2002 0002 0000 0000 0000 0000 FFFF FFFF"},
        {"32-bit array", ArrayOf(VarType::Long, 1, 0x10002),
         "2003 0004 0001 0000 0001 0000 0001 0000 0002 0001"},
        {"single array", ArrayOf(VarType::Single, 0, 1.5),
         "2004 0004 0001 0000 0000 0000 0000 0000 0000 3FC0"},
        {"double array", ArrayOf(VarType::Double, 0, 1.5),
         "2005 0008 0001 0000 0000 0000 0000 0000 0000 0000 0000 3FF8"},
        {"currency array", ArrayOf(VarType::Currency, 0, 1),
         "2006 0008 0001 0000 0000 0000 0000 0000 2710 0000 0000 0000"},
        {"date array", ArrayOf(VarType::Date, 0, -1),
         "2007 0008 0001 0000 0000 0000 0000 0000 0000 0000 0000 BFF0"},
        {"text array", ArrayOf(VarType::String, 0, u"ab", u""),
         "2008 0004 0002 0000 0000 0000 0001 0000 0002 0000 0061 0062 0000 0000"},
        {"Boolean array", ArrayOf(VarType::Boolean, 0, true, false),
         "200B 0002 0002 0000 0000 0000 0001 0000 FFFF 0000"},
        {"array of values", ArrayOf(VarType::Variant, 0, true, u"a"),
         "200C 0010 0002 0000 0000 0000 0001 0000 000B 0002 FFFF 0008 0000 0001 0000 0061"},
        {"three bytes, padded", ArrayOf(VarType::Byte, 0, 1, 2, 3),
         "2011 0001 0003 0000 0000 0000 0002 0000 0201 0003"},
        {"error array", ArrayOf(VarType::Error, 0, Variant::FromError(-5)),
         "200A 0004 0001 0000 0000 0000 0000 0000 FFFB FFFF"},
        {"object array, no addresses", ArrayOf(VarType::Object, 0, MakeObject<CountedObject>()),
         "2009 0004 0001 0000 0000 0000 0000 0000 0000 0000"},
        {"decimal array",
         ArrayOf(VarType::Decimal, 0,
                 Variant::FromDecimal(
                     {.Low = 0x0102030405060708, .High = 9, .Scale = 3, .Negative = true})),
         "200E 0010 0001 0000 0000 0000 0000 0000 0000 8003 0009 0000 0708 0506 0304 0102"},
    };
    for (const auto& row : table) {
        Words words(StreamWordsOf(row.value), 0x5555);
        StreamEncoder encoder(words);
        encoder.Write(row.value);
        EXPECT_EQ(ToHex(words), ToHex(Hex(row.words))) << row.what;
        EXPECT_EQ(encoder.Position(), words.size()) << row.what;
    }
}

TEST(Stream, WhatTheFormatKeepsComesBackUnchanged) {
    const Variant table[] = {
        Variant(),
        std::int16_t{-32768},
        std::numeric_limits<std::int32_t>::min(),
        TheFloat(-0.0F),
        std::numeric_limits<double>::quiet_NaN(),
        5e-324,
        Variant::FromCurrency(std::numeric_limits<std::int64_t>::min()),
        Variant::FromDate(45000.75),
        u"",
        u"text",
        std::u16string(1, u'\0') + u"\xDFFF\xD800",
        Variant::FromError(-2147352572),
        true,
        false,
        std::uint8_t{255},
        ArrayOf(VarType::Integer, -3, 1, 2, 3),
        Array(VarType::Long, 7, 0),
        ArrayOf(VarType::Long, std::numeric_limits<std::int32_t>::max(), 9),
        ArrayOf(VarType::Single, 0, 0.1),
        ArrayOf(VarType::Double, 0, 0.1, 0.2),
        ArrayOf(VarType::Currency, 0, 0.0001),
        ArrayOf(VarType::Date, 0, 1.25),
        ArrayOf(VarType::String, 1, u"", u"b", u"ccc"),
        Array(VarType::String, 0, 0),
        ArrayOf(VarType::Boolean, 0, true, false, true),
        ArrayOf(VarType::Byte, 0, 1),
        ArrayOf(VarType::Byte, 0, 1, 2),
        Array(VarType::Byte, 1, 0),
        ArrayOf(VarType::Variant, 0, 1, u"x",
                ArrayOf(VarType::Variant, -1, ArrayOf(VarType::Byte, 0, 9))),
        Array(VarType::Variant, 3, 0),
    };
    for (const Variant& value : table) EXPECT_EQ(RoundTrip(value), value);
}

// The whole list of what is lost, and what stands in its place.
TEST(Stream, KeptWhatTheFormatLosesComesBackAsEmpty) {
    const struct {
        const char* what;
        Variant value;
    } table[] = {
        {"Null", Variant::Null()},
        {"a decimal", Variant::FromDecimal({.Low = 125, .Scale = 1})},
        {"an object", MakeObject<CountedObject>()},
        {"an array of error codes", ArrayOf(VarType::Error, 0, Variant::FromError(0))},
        {"an array of objects", ArrayOf(VarType::Object, 0, MakeObject<CountedObject>())},
        {"an array of decimals", ArrayOf(VarType::Decimal, 0, Variant::FromDecimal({}))},
    };
    for (const auto& row : table) EXPECT_EQ(RoundTrip(row.value), Variant()) << row.what;
    EXPECT_EQ(RoundTrip(ArrayOf(VarType::Variant, 0, Variant::Null(), 1)),
              Variant(ArrayOf(VarType::Variant, 0, Variant(), 1)));
}

TEST(Stream, KeptAnUnreadableArrayIsNotSkippedAndTheNextValueIsReadFromItsElements) {
    ZVPropertyBag bag;
    bag.Add(ArrayOf(VarType::Error, 0, Variant::FromError(0x00020002), Variant::FromError(7)),
            u"A");
    bag.Add(u"lost", u"B");
    ZVPropertyBag read;
    read.SetContents(bag.Contents());
    ASSERT_EQ(read.Count(), 2);
    EXPECT_EQ(read.Item(1), Variant());
    EXPECT_EQ(read.Item(2), Variant(std::int16_t{7}));
}

TEST(Stream, OddTypesAndSizesReadAsTheirWordsSay) {
    const struct {
        const char* what;
        const char* words;
        Variant value;
    } table[] = {
        {"a size of 9", "0003 0009", Variant()},
        {"a size with the top bit", "0003 8004", Variant()},
        {"a Long of one byte", "0003 0001 0201", std::int32_t{1}},
        {"a Long of three bytes", "0003 0003 0201 FF03", std::int32_t{0x030201}},
        {"an Integer of eight bytes", "0002 0008 0001 0002 0003 0004", std::int16_t{1}},
        {"Null with data", "0001 0002 0007", Variant::Null()},
        {"Empty with data", "0000 0002 0007", Variant()},
        {"a decimal with data", "000E 0008 0001 0000 0000 0000", Variant::FromDecimal({.Low = 1})},
        {"an object is never made", "0009 0008 1234 5678 0000 0000", Variant()},
        {"nor an unknown object", "000D 0004 1234 5678", Variant()},
        {"nor a value by reference", "4003 0004 1234 5678", Variant()},
        {"nor a tagged value", "000C 0008 1234 5678 0000 0000", Variant()},
        {"an array by reference", "6003 0004 0001 0000 0000 0000 0000 0000 1234 5678", Variant()},
        {"a text with a size", "0008 0007 0001 0000 0041", u"A"},
    };
    for (const auto& row : table) {
        ZVPropertyBag bag;
        bag.SetContents(Array::OfWords(OneEntry(Hex(row.words))));
        ASSERT_EQ(bag.Count(), 1) << row.what;
        EXPECT_EQ(bag.Item(1), row.value) << row.what;
        // The settings behind it were reached: all words of the value were taken and no more.
        EXPECT_EQ(bag.Granularity(), 17) << row.what;
    }
}

TEST(Stream, ArraysWhoseCountSizeAndBoundsDisagreeKeepTheirBounds) {
    const struct {
        const char* what;
        const char* words;
        Variant value;
    } table[] = {
        {"fewer numbers than the bounds hold", "2003 0004 0001 0000 0000 0000 0002 0000 0005 0000",
         ArrayOf(VarType::Long, 0, 5, 0, 0)},
        {"narrower elements", "2003 0002 0002 0000 0000 0000 0001 0000 0005 0006",
         ArrayOf(VarType::Long, 0, 0x60005, 0)},
        {"texts go by their bounds", "2008 0004 0009 0000 0000 0000 0000 0000 0001 0000 0041",
         ArrayOf(VarType::String, 0, u"A")},
        {"values go by their bounds", "200C 0010 0009 0000 0000 0000 0000 0000 0002 0002 0005",
         ArrayOf(VarType::Variant, 0, std::int16_t{5})},
        {"no values, but bounds", "200C 0010 0000 0000 0000 0000 0001 0000",
         ArrayOf(VarType::Variant, 0, Variant(), Variant())},
    };
    for (const auto& row : table) {
        ZVPropertyBag bag;
        bag.SetContents(Array::OfWords(OneEntry(Hex(row.words))));
        ASSERT_EQ(bag.Count(), 1) << row.what;
        EXPECT_EQ(bag.Item(1), row.value) << row.what;
    }
}

TEST(Stream, KeptAnOddNumberOfBytesIsRoundedUpForBytesAlone) {
    // Three Booleans of one byte each take one word and a half; the value behind starts at word 2.
    const Words words =
        OneEntry(Hex("200B 0001 0003 0000 0000 0000 0002 0000 FFFF 0003 0004 0007 0000"));
    ZVPropertyBag bag;
    bag.SetContents(Array::OfWords(words));
    ASSERT_EQ(bag.Count(), 1);
    EXPECT_EQ(bag.Granularity(), 7);
}

TEST(Stream, ArraysNestedTooDeepAreRefusedBeforeTheyAreLost) {
    Variant value = 1;
    for (int depth = 0; depth < kStreamDepth; ++depth) value = ArrayOf(VarType::Variant, 0, value);
    EXPECT_EQ(RoundTrip(value), value);
    ZVPropertyBag bag;
    bag.Add(ArrayOf(VarType::Variant, 0, value), u"V");
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(bag.Contents()); }), 5);
}

TEST(Contents_Read, MoreWordsThanAnArrayCanCountRaise) {
    const Variant text = std::u16string(1 << 20, u'x');
    Array texts(VarType::Variant, 0, 1 << 11);  // all of them the same text
    for (Variant& element : texts.MutableElements<Variant>()) element = text;
    ZVPropertyBag bag;
    bag.WriteProperty(u"V", texts);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(bag.Contents()); }), 6);
}

TEST(StreamWords, AMachineWithTheOtherOrderOfBytesWritesTheSameWords) {
    // The numbers 0x01020304 and 0x05060708 as such a machine holds them, and three bytes.
    const std::array<std::byte, 8> numbers{std::byte{1}, std::byte{2}, std::byte{3}, std::byte{4},
                                           std::byte{5}, std::byte{6}, std::byte{7}, std::byte{8}};
    Words words(4);
    PutBytes<std::endian::big>(words.data(), numbers.data(), 8, 4);
    EXPECT_EQ(ToHex(words), "0304 0102 0708 0506");
    std::array<std::byte, 8> back{};
    TakeBytes<std::endian::big>(back.data(), words.data(), 8, 4);
    EXPECT_EQ(back, numbers);

    Words bytes(2, 0x5555);
    PutBytes<std::endian::big>(bytes.data(), numbers.data(), 3, 1);
    EXPECT_EQ(ToHex(bytes), "0201 0003");
}

}  // namespace
}  // namespace zorvane
