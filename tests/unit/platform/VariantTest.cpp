#include "zorvane/platform/Variant.h"

#include <list>

#include "tests/support/Testing.h"
#include "zorvane/platform/ArrayRanges.h"

namespace zorvane {
namespace {

const Variant kArray = Array(VarType::Long, 0, 2);
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// What a value converts to: integer, long, single, currency, Boolean, byte, text; "!" and a number
// where that raises.
std::string Converted(const Variant& value) {
    std::string all;
    const auto add = [&](auto&& conversion) {
        Text text;
        const std::int32_t error = NumberRaisedBy([&] { text = Variant(conversion()).ToText(); });
        all +=
            (all.empty() ? "" : " ") + (error != 0 ? "!" + std::to_string(error) : text.ToUtf8());
    };
    add([&] { return value.ToInteger(); });
    add([&] { return value.ToLong(); });
    add([&] { return value.ToSingle(); });
    add([&] { return Variant::FromCurrency(value.ToCurrency()); });
    add([&] { return value.ToBoolean(); });
    add([&] { return value.ToByte(); });
    add([&] { return value; });
    return all;
}

TEST(Variant_Convert, GivesTheValueOrErrors6And13) {
    const struct {
        const char* what;
        Variant value;
        const char* converted;
        bool isNumber = true;
    } rows[] = {
        {"Empty", {}, "0 0 0 0 False 0 "},
        {"Null", Variant::Null(), "!13 !13 !13 !13 !13 !13 !13", false},
        {"half goes to even", 2.5, "2 2 2.5 2.5 True 2 2.5"},
        {"half goes to even, negative", -1.5, "-2 -2 -1.5 -1.5 True !6 -1.5"},
        {"greatest integer", std::int16_t{32767}, "32767 32767 32767 32767 True !6 32767"},
        {"rounds out of the limit", 32767.5, "!6 32768 32767.5 32767.5 True !6 32767.5"},
        {"rounds to the limit", 255.4, "255 255 255.4 255.4 True 255 255.4"},
        {"past 32 bits", 2147483648.0, "!6 !6 2.147484E+09 2147483648 True !6 2147483648"},
        {"least long", INT32_MIN, "!6 -2147483648 -2.147484E+09 -2147483648 True !6 -2147483648"},
        {"past single", 1e39, "!6 !6 !6 !6 True !6 1E+39"},
        {"not a number", kNan, "!6 !6 nan !6 True !6 nan"},
        {"single", 0.1f, "0 0 0.1 0.1 True 0 0.1"},
        {"True is minus one", true, "-1 -1 -1 -1 True !6 True"},
        {"text of a number", " 12.5 ", "12 12 12.5 12.5 True 12  12.5 ", false},
        {"text of no number", "12x", "!13 !13 !13 !13 !13 !13 12x", false},
        {"text past a double", "1e400", "!6 !6 !6 !6 !6 !6 1e400", false},
        {"the word false", "fALSE", "!13 !13 !13 !13 False !13 fALSE", false},
        {"the word true", "tRUE", "!13 !13 !13 !13 True !13 tRUE", false},
        {"currency", Variant::FromCurrency(-15000), "-2 -2 -1.5 -1.5 True !6 -1.5"},
        {"date", Variant::FromDate(1.5), "2 2 1.5 1.5 True 2 1899-12-31 12:00:00", false},
        {"decimal", Variant::FromDecimal({5, 0, 1, true}), "0 0 -0.5 -0.5 True 0 -0.5"},
        {"decimal of 96 bits", Variant::FromDecimal({0, 1, 20}),
         "0 0 0.1844674 0.1845 True 0 0.18446744073709551616"},
        {"endless", std::numeric_limits<double>::infinity(), "!6 !6 inf !6 True !6 inf"},
        {"byte", std::uint8_t{200}, "200 200 200 200 True 200 200"},
        {"error", Variant::FromError(-3), "!13 !13 !13 !13 !13 !13 Error -3", false},
        {"no object", Ref<Object>(), "!13 !13 !13 !13 !13 !13 !13", false},
        {"array", kArray, "!13 !13 !13 !13 !13 !13 !13", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Converted(row.value), row.converted) << row.what;
        EXPECT_EQ(row.value.IsNumber(), row.isNumber) << row.what;
    }
}

TEST(Variant_As, RaisesTypeMismatchForAnotherTypeAnd91ForNoObject) {
    const Variant number(5);
    EXPECT_EQ(NumberRaisedBy([&] { return number.AsText(); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { return number.AsArray(); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { return number.AsDecimal(); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { return number.AsError(); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { return &number.TheObject(); }), 13);
    EXPECT_EQ(NumberRaisedBy([] { return &Variant(Ref<Object>()).TheObject(); }), 91);
    EXPECT_EQ(NumberRaisedBy([] { return Variant::FromDecimal({.Scale = 29}); }), 6);
}

TEST(Variant_Equal, NeedsTheSameTypeAndTheSameBytes) {
    const Variant object = MakeObject<CountedObject>();
    const std::tuple<Variant, Variant, bool> rows[] = {
        {1, 1, true},
        {1, std::int16_t{1}, false},
        {0.0, -0.0, false},
        {u"a", "a", true},
        {u"a", u"A", false},
        {object, object, true},
        {object, MakeObject<CountedObject>(), false},
        {kArray, Array(VarType::Long, 0, 2), true},
    };
    for (const auto& [left, right, equal] : rows) EXPECT_EQ(left == right, equal) << left;
    Variant later(123456789.0);  // leaves bytes behind that a smaller payload does not cover
    later = std::uint8_t{7};
    EXPECT_EQ(later, Variant(std::uint8_t{7}));
    std::memset(static_cast<void*>(&later), 0, sizeof later);
    EXPECT_TRUE(later.IsEmpty());
    EXPECT_TRUE(Variant(Array()).IsEmpty());
}

TEST(Variant_Make, TakesAnyWholeNumberThatFitsAndPrintsAsItsValue) {
    Array nest(VarType::Variant, 1, 2);
    nest.SetAt(1, kArray);
    const std::tuple<Variant, VarType, const char*> rows[] = {
        {std::size_t{5}, VarType::Long, "5"},
        {std::int64_t{INT32_MIN}, VarType::Long, "-2147483648"},
        {std::uint16_t{65535}, VarType::Long, "65535"},
        {u8"\u00E9", VarType::String, "\xC3\xA9"},
        {nullptr, VarType::Object, "Nothing"},
        {Variant::Null(), VarType::Null, "Null"},
        {MakeObject<CountedObject>(), VarType::Object, "CountedObject"},
        {Variant::FromError(-3), VarType::Error, "Error -3"},
        {ArrayOf(std::list<long>{1, -2}), VarType::ArrayFlag | VarType::Long, "{1, -2}"},
        {nest, VarType::ArrayFlag | VarType::Variant, "{{...}, }"},
    };
    for (const auto& [value, type, printed] : rows) {
        std::ostringstream out;
        out << value;
        EXPECT_EQ(out.str(), printed);
        EXPECT_EQ(value.ToDebugText(),
                  "type " + std::to_string(static_cast<int>(type)) + ": " + printed);
    }
    EXPECT_EQ(NumberRaisedBy([] { return Variant(std::uint32_t{0x80000000}); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { return ArrayOf(std::vector{INT64_MAX}); }), 6);
}

TEST(ArrayOf_VectorOf, ComeBackAsTheyWereOrConverted) {
    const auto same = []<class T>(const std::vector<T>& values) {
        EXPECT_EQ(VectorOf<T>(ArrayOf(values, -1)), values);
    };
    same(std::vector{true, false});
    same(std::vector<std::uint8_t>{0, 255});
    same(std::vector<std::size_t>{0, 7});
    same(std::vector{0.1f});
    same(std::vector{0.1});
    same(std::vector<std::string>{"a", "\xC3\xA9"});
    same(std::vector<Variant>{1, "a", {}});
    EXPECT_EQ(VectorOf<Text>(ArrayOf(std::vector{1.5})), std::vector<Text>{"1.5"});
    const Array large = ArrayOf(std::vector{0.5, 1.5, 3e9});
    EXPECT_EQ(VectorOf<std::uint32_t>(large), (std::vector<std::uint32_t>{0, 2, 3'000'000'000}));
    EXPECT_EQ(ConvertTo<std::int64_t>(-0x1p63), INT64_MIN);
    EXPECT_EQ(ConvertTo<std::uint64_t>(0x1p63), std::uint64_t{1} << 63);
    EXPECT_EQ(NumberRaisedBy([] { return ConvertTo<std::uint32_t>(0x1p32); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { return ConvertTo<std::int64_t>(0x1p63); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { return VectorOf<unsigned>(ArrayOf(std::vector{-1})); }), 6);
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

}  // namespace
}  // namespace zorvane
