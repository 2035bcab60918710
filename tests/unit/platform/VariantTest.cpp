#include "platform/Variant.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <sstream>

#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

Variant NumberArray() {
    return Array(VarType::Long, 0, 2);
}

// What a conversion of `value` gives: its text, or the number of its error.
std::string Converted(const std::function<Variant()>& conversion) {
    try {
        return conversion().ToText().ToUtf8();
    } catch (const Error& error) {
        return "error " + std::to_string(error.Number);
    }
}

TEST(Variant_Convert, GivesTheValueOrErrors6And13) {
    const Decimal half{5, 0, 1, false};
    const struct {
        const char* what;
        Variant value;
        const char* integer;
        const char* toLong;
        const char* single;
        const char* currency;
        const char* boolean;
        const char* byte;
    } rows[] = {
        {"Empty", {}, "0", "0", "0", "0", "False", "0"},
        {"Null", Variant::Null(), "error 13", "error 13", "error 13", "error 13", "error 13",
         "error 13"},
        {"half goes to even", 2.5, "2", "2", "2.5", "2.5", "True", "2"},
        {"half goes to even, negative", -1.5, "-2", "-2", "-1.5", "-1.5", "True", "error 6"},
        {"greatest integer", std::int16_t{32767}, "32767", "32767", "32767", "32767", "True",
         "error 6"},
        {"one more", 32768, "error 6", "32768", "32768", "32768", "True", "error 6"},
        {"rounds back inside", 32767.5, "error 6", "32768", "32767.5", "32767.5", "True",
         "error 6"},
        {"rounds to the limit", 255.4, "255", "255", "255.4", "255.4", "True", "255"},
        {"past 32 bits", 2147483648.0, "error 6", "error 6", "2.147484E+09", "2147483648", "True",
         "error 6"},
        {"least long", std::int32_t{INT32_MIN}, "error 6", "-2147483648", "-2.147484E+09",
         "-2147483648", "True", "error 6"},
        {"past single", 1e39, "error 6", "error 6", "error 6", "error 6", "True", "error 6"},
        {"not a number", std::numeric_limits<double>::quiet_NaN(), "error 6", "error 6", "nan",
         "error 6", "True", "error 6"},
        {"True is minus one", true, "-1", "-1", "-1", "-1", "True", "error 6"},
        {"text of a number", " 12.5 ", "12", "12", "12.5", "12.5", "True", "12"},
        {"text of no number", "12x", "error 13", "error 13", "error 13", "error 13", "error 13",
         "error 13"},
        {"empty text", "", "error 13", "error 13", "error 13", "error 13", "error 13", "error 13"},
        {"the word false", "fALSE", "error 13", "error 13", "error 13", "error 13", "False",
         "error 13"},
        {"currency", Variant::FromCurrency(25000), "2", "2", "2.5", "2.5", "True", "2"},
        {"date", Variant::FromDate(1.5), "2", "2", "1.5", "1.5", "True", "2"},
        {"decimal", Variant::FromDecimal(half), "0", "0", "0.5", "0.5", "True", "0"},
        {"byte", std::uint8_t{200}, "200", "200", "200", "200", "True", "200"},
        {"error", Variant::FromError(5), "error 13", "error 13", "error 13", "error 13", "error 13",
         "error 13"},
        {"no object", Ref<Object>(), "error 13", "error 13", "error 13", "error 13", "error 13",
         "error 13"},
        {"array", NumberArray(), "error 13", "error 13", "error 13", "error 13", "error 13",
         "error 13"},
    };
    for (const auto& row : rows) {
        const Variant& value = row.value;
        EXPECT_EQ(Converted([&] { return value.ToInteger(); }), row.integer) << row.what;
        EXPECT_EQ(Converted([&] { return value.ToLong(); }), row.toLong) << row.what;
        EXPECT_EQ(Converted([&] { return value.ToSingle(); }), row.single) << row.what;
        EXPECT_EQ(Converted([&] { return Variant::FromCurrency(value.ToCurrency()); }),
                  row.currency)
            << row.what;
        EXPECT_EQ(Converted([&] { return value.ToBoolean(); }), row.boolean) << row.what;
        EXPECT_EQ(Converted([&] { return value.ToByte(); }), row.byte) << row.what;
    }
}

TEST(Variant_ToText, HasOneFormPerTypeAndNoneForNullObjectsAndArrays) {
    const struct {
        Variant value;
        const char* text;
    } rows[] = {
        {{}, ""},
        {Variant::Null(), "error 13"},
        {std::int16_t{-7}, "-7"},
        {1000000, "1000000"},
        {0.1f, "0.1"},
        {0.1, "0.1"},
        {Variant::FromCurrency(-15000), "-1.5"},
        {Variant::FromDate(1), "1899-12-31"},
        {u"as it is ", "as it is "},
        {Variant(MakeObject<CountedObject>()), "error 13"},
        {Ref<Object>(), "error 13"},
        {Variant::FromError(-3), "Error -3"},
        {true, "True"},
        {false, "False"},
        {Variant::FromDecimal({15, 0, 1, true}), "-1.5"},
        {std::uint8_t{9}, "9"},
        {NumberArray(), "error 13"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Converted([&] { return row.value; }), row.text) << row.value;
    }
}

TEST(Variant_As, RaisesTypeMismatchForAnotherTypeAnd91ForNoObject) {
    const Variant number(5);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(number.AsText()); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(number.AsArray()); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(number.AsObject()); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(number.AsDecimal()); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(number.AsError()); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(number.TheObject()); }), 13);
    EXPECT_EQ(NumberRaisedBy([] { static_cast<void>(Variant(Ref<Object>()).TheObject()); }), 91);
}

TEST(Variant_IsNumber, TextsDatesAndErrorsAreNone) {
    EXPECT_TRUE(Variant(1.5).IsNumber());
    EXPECT_TRUE(Variant().IsNumber());
    EXPECT_TRUE(Variant(true).IsNumber());
    EXPECT_FALSE(Variant("1.5").IsNumber());
    EXPECT_FALSE(Variant(u"Not Applicable").IsNumber());
    EXPECT_FALSE(Variant::Null().IsNumber());
    EXPECT_FALSE(Variant::FromDate(1).IsNumber());
    EXPECT_FALSE(NumberArray().IsNumber());
}

TEST(Variant_Equal, NeedsTheSameTypeAndTheSameBytes) {
    EXPECT_EQ(Variant(1), Variant(1));
    EXPECT_NE(Variant(1), Variant(std::int16_t{1}));
    EXPECT_NE(Variant(0.0), Variant(-0.0));
    EXPECT_EQ(Variant(u"a"), Variant("a"));
    EXPECT_NE(Variant(u"a"), Variant(u"A"));
    const auto object = MakeObject<CountedObject>();
    EXPECT_EQ(Variant(object), Variant(object));
    EXPECT_NE(Variant(object), Variant(MakeObject<CountedObject>()));
    EXPECT_EQ(NumberArray(), NumberArray());
    Variant later(123456789.0);  // leaves bytes behind that a smaller payload does not cover
    later = std::uint8_t{7};
    EXPECT_EQ(later, Variant(std::uint8_t{7}));
}

TEST(Variant_ZeroBytes, AreTheEmptyValue) {
    alignas(Variant) std::byte bytes[sizeof(Variant)] = {};
    Variant value(5);
    std::memcpy(static_cast<void*>(&value), bytes, sizeof value);
    EXPECT_TRUE(value.IsEmpty());
}

TEST(Variant_ScalarBits, ComeBackForEveryScalarTypeAndAreEmptyForCountedOnes) {
    const Variant scalars[] = {Variant::Null(),
                               std::int16_t{-2},
                               -3,
                               1.5f,
                               2.5,
                               Variant::FromCurrency(-9),
                               true,
                               Variant::FromDate(3.25),
                               Variant::FromError(-1),
                               std::uint8_t{255}};
    for (const Variant& value : scalars) {
        EXPECT_EQ(Variant::FromScalarBits(value.Type(), value.ScalarBits()), value) << value;
        // Bytes behind a short payload are not part of the value.
        const std::uint64_t noise = value.ScalarBits() | 0xAB00000000000000u;
        if (ArrayElementSize(value.Type()) < 8) {
            EXPECT_EQ(Variant::FromScalarBits(value.Type(), noise), value) << value;
        }
    }
    for (const auto type : {VarType::String, VarType::Object, VarType::Variant,
                            VarType::ArrayFlag | VarType::Long, static_cast<VarType>(99)}) {
        EXPECT_TRUE(Variant::FromScalarBits(type, 0x1000).IsEmpty());
    }
    EXPECT_EQ(Variant(u"text").ScalarBits(), 0u);
}

TEST(Variant_Assign, ReleasesTheOldObjectOnceAndAfterTheNewValueStands) {
    Variant seen;
    Variant value;
    value = Variant(MakeObject<CountedObject>([&] { seen = value; }));
    Variant copy = value;
    value = 5;
    EXPECT_EQ(CountedObject::Alive(), 1);  // the copy holds it
    copy = 6;
    EXPECT_EQ(CountedObject::Alive(), 0);
    EXPECT_EQ(seen, Variant(5));  // the release saw the finished assignment
    Variant& same = copy;
    copy = same;
    EXPECT_EQ(copy, Variant(6));
}

TEST(Variant_Array, OfNoTypeIsEmptyAndCopiesShareUntilWritten) {
    EXPECT_TRUE(Variant(Array()).IsEmpty());
    Array words(VarType::Integer, 0, 2);
    const Variant kept(words);
    words.SetAt(1, 7);
    EXPECT_EQ(kept.AsArray().At(1), Variant(std::int16_t{0}));
    EXPECT_EQ(kept.Type(), VarType::ArrayFlag | VarType::Integer);
}

TEST(Classify, ATextIsAKeyA16Or32BitIntegerAPositionAndNothingElseIsEither) {
    using Kind = KeyOrPosition::Kind;
    EXPECT_EQ(Classify(Variant(u"7")).Is, Kind::Key);
    EXPECT_EQ(Classify(Variant(7)).Position, 7);
    EXPECT_EQ(Classify(Variant(std::int16_t{-7})).Position, -7);
    for (const Variant& value : {Variant(), Variant(7.0), Variant(true), Variant(std::uint8_t{7}),
                                 Variant::Null(), NumberArray()}) {
        EXPECT_EQ(Classify(value).Is, Kind::Neither) << value;
    }
}

TEST(Variant_Print, ShowsTypeAndTextOrThatThereIsNone) {
    std::ostringstream out;
    out << Variant(7) << "; " << Variant::Null();
    EXPECT_EQ(out.str(), "type 3: 7; type 1 (no text)");
}

}  // namespace
}  // namespace zorvane
