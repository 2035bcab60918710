// What a bag's stream looks like, word by word, and what comes back out of it.

#include "tests/support/Testing.h"
#include "tests/unit/propbag/Words.h"
#include "zorvane/propbag/detail/StreamEncoder.h"
#include "zorvane/propbag/detail/StreamValue.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {
namespace {

using modZorvane::ReadStreamValue;
using modZorvane::WriteStreamValue;

// The value after one trip through the words of a bag.
Variant RoundTrip(const Variant& value) {
    ZVPropertyBag bag;
    bag.Add(value, u"V");
    const ZVPropertyBag read = BagFrom(bag.Contents());
    return read.Count() == 1 ? read.Item(1) : Variant(u"nothing came back");
}

TEST(Contents_Read, AnEmptyBagIsThese16WordsAndTheBagOfTwoEntriesThese61) {
    ZVPropertyBag bag;
    EXPECT_EQ(ToHex(bag.Contents().Words()),
              ToHex(Hex("D8F1 D8F1 0003 0004 0000 0000 0003 0004 0010 0000 000B 0002 FFFF "
                        "000B 0002 FFFF")));
    bag.SetGranularity(77);
    EXPECT_EQ(BagFrom(bag.Contents()).Granularity(), 16) << "nothing is read behind the marker";
    bag.SetGranularity(16);
    bag.WriteProperty(u"Left", 1200);
    bag.WriteProperty(u"Caption", u"Hi");
    EXPECT_EQ(ToHex(bag.Contents().Words()), ToHex(TwoEntries()));
    EXPECT_EQ(bag.Contents().LowerBound(), 0);
}

// What words alone do is DamageTest's and the replay's.
TEST(Contents_Assign, WhatIsNoStreamLeavesTheBagCleared) {
    const std::pair<const char*, Variant> table[] = {
        {"Empty, as an absent file reads", Variant()},
        {"a text", u"\xFFFF\xFFFF"},
        {"an array of Longs", Array(VarType::Long, 0, 80)},
        {"an array of Booleans", ArrayOf(VarType::Boolean, 0, true, true, true)},
    };
    for (const auto& [what, value] : table) {
        EXPECT_EQ(BagFrom(value).Contents(), ZVPropertyBag().Contents()) << what;
    }
}

TEST(Contents_Assign, CountAndSettingsConvertFromWhateverTypeTheyHave) {
    // The count as the text "1", granularity 2.5 as a Double, the flags as the text "False" and 7.
    const ZVPropertyBag bag =
        BagFrom(Hex("FFFF FFFF  0008 0000 0001 0000 0031 "
                    "2008 0004 0001 0000 0001 0000 0001 0000  0001 0000 0056 "
                    "2008 0004 0001 0000 0001 0000 0001 0000  0000 0000  0002 0002 0005 "
                    "0005 0008 0000 0000 0000 4004 "
                    "0008 0000 0005 0000 0046 0061 006C 0073 0065  0003 0004 0007 0000"));
    ASSERT_EQ(bag.Count(), 1);
    EXPECT_EQ(bag.Granularity(), 2);
    EXPECT_FALSE(bag.Sorted());
}

TEST(Stream, EveryTypeHasItsWordsAndComesBackButForWhatTheFormatLoses) {
    constexpr std::int32_t kGreatest = std::numeric_limits<std::int32_t>::max();
    const auto object = MakeObject<CountedObject>();
    const auto decimal =
        Variant::FromDecimal({.Low = 0x0102030405060708, .High = 9, .Scale = 3, .Negative = true});
    const struct {
        const char* what;
        Variant value;
        const char* words;
        bool lost = false;
    } table[] = {
        {"Empty", Variant(), "0000 0000"},
        {"16-bit", std::int16_t{-2}, "0002 0002 FFFE"},
        {"32-bit", std::int32_t{-2}, "0003 0004 FFFE FFFF"},
        {"single", Variant(-1.5F), "0004 0004 0000 BFC0"},
        {"double", 1.5, "0005 0008 0000 0000 0000 3FF8"},
        {"currency", Variant::FromCurrency(0x0102030405060708), "0006 0008 0708 0506 0304 0102"},
        {"date", Variant::FromDate(-1), "0007 0008 0000 0000 0000 BFF0"},
        {"text", u"a\xD800", "0008 0000 0002 0000 0061 D800"},
        {"empty text", Text(), "0008 0000 0000 0000"},
        {"error code", Variant::FromError(-5), "000A 0004 FFFB FFFF"},
        {"true", true, "000B 0002 FFFF"},
        {"byte", std::uint8_t{0xFE}, "0011 0001 00FE"},
        {"16-bit array", ArrayOf(VarType::Integer, -1, 1, -1),
         "2002 0002 0002 0000 FFFF FFFF 0000 0000 0001 FFFF"},
        {"no elements", Array(VarType::Integer, 0, 0), "2002 0002 0000 0000 0000 0000 FFFF FFFF"},
        {"32-bit array with the greatest bound", ArrayOf(VarType::Long, kGreatest, 0x10002),
         "2003 0004 0001 0000 FFFF 7FFF FFFF 7FFF 0002 0001"},
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
        {"array in an array", ArrayOf(VarType::Variant, 3, ArrayOf(VarType::Byte, 0, 9)),
         "200C 0010 0001 0000 0003 0000 0003 0000 2011 0001 0001 0000 0000 0000 0000 0000 0009"},
        {"three bytes, padded", ArrayOf(VarType::Byte, 0, 1, 2, 3),
         "2011 0001 0003 0000 0000 0000 0002 0000 0201 0003"},
        // Kept: the whole list of what the format loses; Empty stands in its place.
        {"Null", Variant::Null(), "0001 0000", true},
        {"no object", Ref<Object>(), "0000 0000", true},
        {"object", object, "0000 0000", true},
        {"decimal", decimal, "000E 0000", true},
        {"error array", ArrayOf(VarType::Error, 0, Variant::FromError(-5)),
         "200A 0004 0001 0000 0000 0000 0000 0000 FFFB FFFF", true},
        {"object array, no addresses", ArrayOf(VarType::Object, 0, object),
         "2009 0004 0001 0000 0000 0000 0000 0000 0000 0000", true},
        {"decimal array", ArrayOf(VarType::Decimal, 0, decimal, Variant::FromDecimal({.Low = 5})),
         "200E 0010 0002 0000 0000 0000 0001 0000 0000 8003 0009 0000 0708 0506 0304 0102 "
         "0000 0000 0000 0000 0005 0000 0000 0000",
         true},
    };
    for (const auto& [what, value, words, lost] : table) {
        Words written(static_cast<std::size_t>(StreamWordsOf(value)), 0x5555);
        StreamEncoder encoder(written);
        encoder.Write(value);
        EXPECT_EQ(ToHex(written), ToHex(Hex(words))) << what;
        EXPECT_EQ(encoder.Position(), written.size()) << what;
        EXPECT_EQ(RoundTrip(value), lost ? Variant() : value) << what;
        EXPECT_TRUE(lost || !DecodeBag(OneEntry(words), StreamCare::Checker).Damage) << what;
    }
}

// Catches a copy in pieces that leaves a unit out, or writes beyond the text.
TEST(Stream, ATextOfAnyLengthComesBack) {
    for (char16_t length = 0; length < 40; ++length) {
        const Text text = std::u16string(length, static_cast<char16_t>(u'!' + length));
        EXPECT_EQ(RoundTrip(text), Variant(text)) << text;
    }
}

TEST(Stream, OddTypesSizesCountsAndBoundsReadAsTheirWordsSay) {
    const struct {
        const char* what;
        const char* words;
        Variant value;
        std::int32_t granularity = 17;  // all words were taken and no more
    } table[] = {
        {"a size of 9", "0003 0009", Variant()},
        {"a size with the top bit", "0003 8004", Variant()},
        {"a Long of one byte", "0003 0001 0201", std::int32_t{1}},
        {"a Long of three bytes", "0003 0003 0201 FF03", std::int32_t{0x030201}},
        {"an Integer of eight bytes", "0002 0008 0001 0002 0003 0004", std::int16_t{1}},
        {"Null with data", "0001 0002 0007", Variant::Null()},
        {"a decimal with data", "000E 0008 0001 0000 0000 0000", Variant::FromDecimal({.Low = 1})},
        {"an object is never made", "0009 0008 1234 5678 0000 0000", Variant()},
        {"nor a value by reference", "4003 0004 1234 5678", Variant()},
        {"an array by reference", "6003 0004 0001 0000 0000 0000 0000 0000 1234 5678", Variant()},
        {"a text with a size", "0008 0007 0001 0000 0041", u"A"},
        {"fewer numbers than the bounds hold", "2003 0004 0001 0000 0000 0000 0002 0000 0005 0000",
         ArrayOf(VarType::Long, 0, 5, 0, 0)},
        {"bounds for as many bytes more as the stream has",
         "2011 0001 0000 0000 0000 0000 0059 0000", Array(VarType::Byte, 0, 90)},
        {"narrower elements", "2003 0002 0002 0000 0000 0000 0001 0000 0005 0006",
         ArrayOf(VarType::Long, 0, 0x60005, 0)},
        {"texts go by their bounds", "2008 0004 0009 0000 0000 0000 0000 0000 0001 0000 0041",
         ArrayOf(VarType::String, 0, u"A")},
        {"values go by their bounds", "200C 0010 0009 0000 0000 0000 0000 0000 0002 0002 0005",
         ArrayOf(VarType::Variant, 0, std::int16_t{5})},
        {"no values, but bounds", "200C 0010 0000 0000 0000 0000 0001 0000",
         ArrayOf(VarType::Variant, 0, Variant(), Variant())},
        {"kept: an unreadable array is not skipped, and the next value is read from its elements",
         "200A 0004 0002 0000 0000 0000 0001 0000 0003 0004 0007 0000", Variant(), 7},
        {"kept: three bytes are rounded up for Bytes alone, and the next value begins at the third",
         "2002 0001 0003 0000 0000 0000 0002 0000 FFFF 0003 0004 0007 0000",
         ArrayOf(VarType::Integer, 0, -1, 3, 0), 7},
    };
    for (const auto& [what, words, value, granularity] : table) {
        const ZVPropertyBag bag = BagFrom(OneEntry(words));
        ASSERT_EQ(bag.Count(), 1) << what;
        EXPECT_EQ(bag.Item(1), value) << what;
        EXPECT_EQ(bag.Granularity(), granularity) << what;
    }
}

// Catches what would be lost when it is read, fill the memory, or have no place in an array.
TEST(Stream, TooDeepNestsAndTooManyWordsAreRefused) {
    const auto nest = [](int levels, int times) {
        Variant value = Array(VarType::Long, 0, 1);  // which lies no deeper than a number
        for (; levels > 0; --levels) {
            value = times == 1 ? ArrayOf(VarType::Variant, 0, value)
                               : ArrayOf(VarType::Variant, 0, value, value);
        }
        return value;
    };
    const Variant most = nest(kStreamDepth, 1), inner = most.AsArray().At(0);
    Array texts(VarType::Variant, 0, 1 << 11);  // all of them the same text
    const Variant text = std::u16string(1 << 20, u'x');
    for (Variant& element : texts.MutableElements<Variant>()) element = text;
    const std::tuple<const char*, Variant, std::int32_t> rows[] = {
        {"as deep as may be", most, 0},
        {"one level more", nest(kStreamDepth + 1, 1), 5},
        {"known already, and not too deep", ArrayOf(VarType::Variant, 0, inner, inner), 0},
        {"known already, and too deep where it comes again",
         ArrayOf(VarType::Variant, 0, inner, ArrayOf(VarType::Variant, 0, inner)), 5},
        {"4096 ways to one value", nest(12, 2), 0},
        {"16 million ways to one value", nest(24, 2), 6},
        {"more words than an array can count", texts, 6},
    };
    for (const auto& [what, value, error] : rows) {
        Variant back;
        EXPECT_EQ(NumberRaisedBy([&, &given = value] { back = RoundTrip(given); }), error) << what;
        EXPECT_EQ(back == value, error == 0) << what;
    }
}

TEST(StreamWords, AMachineWithTheOtherOrderOfBytesWritesTheSameWords) {
    // The numbers 0x01020304 and 0x05060708 as such a machine holds them, and three bytes.
    const auto numbers = std::bit_cast<std::array<std::byte, 8>>(
        std::array<std::uint8_t, 8>{1, 2, 3, 4, 5, 6, 7, 8});
    Words words(4);
    PutBytes<std::endian::big>(words.data(), numbers.data(), 8, 4);
    EXPECT_EQ(words, Hex("0304 0102 0708 0506"));
    std::array<std::byte, 8> back{};
    TakeBytes<std::endian::big>(back.data(), words.data(), 8, 4);
    EXPECT_EQ(back, numbers);
    Words bytes(2, 0x5555);
    PutBytes<std::endian::big>(bytes.data(), numbers.data(), 3, 1);
    EXPECT_EQ(bytes, Hex("0201 0003"));
}

// The stream grows when its highest index is not greater than the position and the margin.
TEST(WriteStreamValue, ItGrowsAsSoonAsTheMarginIsNotLeft) {
    const std::int32_t step = 0x8000;
    const std::tuple<const char*, Variant, std::int32_t, std::int32_t> table[] = {
        {"Long", 5, 4, step},
        {"Byte", std::uint8_t{1}, 3, step},
        {"Empty", Variant(), 2, step},
        {"text", u"abcde", 9, step + 5},
        {"array header", Array(VarType::String, 0, 0), 8, step},
        // One word less than its margin, and the second text is what no longer fits.
        {"texts", ArrayOf(VarType::String, 0, u"abc", u"de"), 8 + 5 + 4, step + 2},
        {"numbers", Array(VarType::Long, 0, 3), 8 + 6 + 8, step + 6},
        {"odd bytes", Array(VarType::Byte, 0, 3), 8 + 2 + 8, step + 2},
        {"values", ArrayOf(VarType::Variant, 0, u"abc"), 8 + 7, step + 3},
    };
    for (const auto& [what, value, margin, growth] : table) {
        for (const std::int32_t capacity : {margin + 1, margin}) {
            Array stream(VarType::Integer, 0, capacity + 1);
            std::int32_t highest = capacity, written = 0, read = 0;
            WriteStreamValue(stream, highest, written, value);
            EXPECT_EQ(highest, capacity == margin ? margin + growth : capacity) << what;
            EXPECT_EQ(stream.UpperBound(), highest) << what;
            EXPECT_EQ(ReadStreamValue(stream, read), value) << what;
            EXPECT_EQ(read, written) << what;
        }
    }
}

TEST(WriteStreamValue, WrongStreamsAndPositionsRaiseAndChangeNothing) {
    const struct {
        const char* what;
        VarType element;
        std::int32_t position, capacity, written, read;
    } table[] = {
        {"no words", VarType::Long, 0, 20, 13, 13},
        {"below", VarType::Integer, -1, 20, 9, 9},
        {"behind", VarType::Integer, 21, 20, 9, 9},
        {"false capacity", VarType::Integer, 0, 8, 9, 0},
    };
    for (const auto& row : table) {
        Array words(row.element, 0, 21);
        std::int32_t position = row.position;
        std::int32_t capacity = row.capacity;
        const auto write = [&] { WriteStreamValue(words, capacity, position, 1); };
        EXPECT_EQ(NumberRaisedBy(write), row.written) << row.what;
        EXPECT_EQ(words, Array(row.element, 0, 21)) << row.what;
        EXPECT_EQ(position, row.position) << row.what;
        const auto read = [&] { return ReadStreamValue(words, position); };
        EXPECT_EQ(NumberRaisedBy(read), row.read) << row.what;
    }
}

}  // namespace
}  // namespace zorvane
