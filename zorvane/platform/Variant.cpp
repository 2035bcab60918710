#include "zorvane/platform/Variant.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <sstream>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/NumberText.h"
#include "zorvane/platform/Relocate.h"

namespace zorvane {
namespace {

template <class Integer>
Integer RoundTo(double value) {
    const auto rounded = RoundHalfEven(value, std::numeric_limits<Integer>::min(),
                                       std::numeric_limits<Integer>::max());
    if (!rounded) RaisePlatform(PlatformError::Overflow);
    return static_cast<Integer>(*rounded);
}

double DecimalValue(const Decimal& value) {
    const double whole =
        std::ldexp(static_cast<double>(value.High), 64) + static_cast<double>(value.Low);
    const double scaled = whole / std::pow(10.0, value.Scale);
    return value.Negative ? -scaled : scaled;
}

// How far from a number's low end the scalar stands whose bytes a payload begins with.
int ShiftOf(VarType type) noexcept {
    const auto width = static_cast<int>(ScalarWidth(type));
    return std::endian::native == std::endian::big && width != 0 ? 64 - 8 * width : 0;
}

// The counted value whose bytes a payload begins with.
template <class T>
T& Counted(std::int64_t& payload) noexcept {
    static_assert(sizeof(T) <= sizeof payload && alignof(T) <= alignof(std::int64_t));
    return *std::launder(reinterpret_cast<T*>(&payload));
}

}  // namespace

Variant::Variant(Array value) noexcept : Variant() {
    if (value.ElementType() == VarType::Empty) return;
    mark_ = MarkOf(VarType::ArrayFlag | value.ElementType());
    std::construct_at(&array_, std::move(value));
}

Variant Variant::FromDate(double days) noexcept {
    Variant made(days);
    made.mark_ = MarkOf(VarType::Date);
    return made;
}

Variant Variant::FromDecimal(const Decimal& value) {
    constexpr std::uint8_t kGreatestScale = 28;
    if (value.Scale > kGreatestScale) RaisePlatform(PlatformError::Overflow);
    Variant made(VarType::Decimal, static_cast<std::int64_t>(value.Low));
    made.high_ = value.High;
    made.scale_ = value.Scale;
    made.negative_ = value.Negative;
    return made;
}

Variant Variant::FromError(std::int32_t status) noexcept {
    Variant made(status);
    made.mark_ = MarkOf(VarType::Error);
    return made;
}

Variant Variant::FromScalarBits(VarType type, std::uint64_t bits) noexcept {
    const std::size_t width = ScalarWidth(type);
    if (width == 0) return type == VarType::Null ? Variant(VarType::Null, 0) : Variant();
    bits &= ~std::uint64_t{0} >> (64 - 8 * width);
    return {type, static_cast<std::int64_t>(bits << ShiftOf(type))};
}

void Variant::Retain(VarType type, std::int64_t payload) noexcept {
    // A reference that nobody lets go again.
    if (type == VarType::String) {
        static_cast<void>(new (&payload) Text(Counted<Text>(payload)));
    } else if (type == VarType::Object) {
        static_cast<void>(new (&payload) Ref<Object>(Counted<Ref<Object>>(payload)));
    } else {
        static_cast<void>(new (&payload) Array(Counted<Array>(payload)));
    }
}

void Variant::Release(VarType type, std::int64_t payload) noexcept {
    if (type == VarType::String) {
        std::destroy_at(&Counted<Text>(payload));
    } else if (type == VarType::Object) {
        std::destroy_at(&Counted<Ref<Object>>(payload));
    } else {
        std::destroy_at(&Counted<Array>(payload));
    }
}

bool Variant::IsNumber() const noexcept {
    switch (Type()) {
        case VarType::Empty:
        case VarType::Integer:
        case VarType::Long:
        case VarType::Single:
        case VarType::Double:
        case VarType::Currency:
        case VarType::Boolean:
        case VarType::Decimal:
        case VarType::Byte:
            return true;
        default:
            return false;
    }
}

bool Variant::ToBoolean() const {
    if (Is(VarType::String)) {
        if (EqualTexts(text_, u"True", CompareMode::Text)) return true;
        if (EqualTexts(text_, u"False", CompareMode::Text)) return false;
    }
    return ToDouble() != 0;
}

std::uint8_t Variant::ToByte() const {
    return RoundTo<std::uint8_t>(ToDouble());
}

std::int64_t Variant::ToCurrency() const {
    if (Is(VarType::Currency)) return bits_;
    return RoundTo<std::int64_t>(ToDouble() * 10000);
}

double Variant::ToDouble() const {
    switch (Type()) {
        case VarType::Empty:
            return 0;
        case VarType::Integer:
        case VarType::Boolean:
            return integer_;
        case VarType::Long:
            return long_;
        case VarType::Single:
            return static_cast<double>(single_);
        case VarType::Double:
        case VarType::Date:
            return double_;
        case VarType::Currency:
            return static_cast<double>(bits_) / 10000;
        case VarType::Decimal:
            return DecimalValue(AsDecimal());
        case VarType::Byte:
            return byte_;
        case VarType::String:
            if (const auto number = ParseNumber(text_)) {
                if (std::isinf(*number)) RaisePlatform(PlatformError::Overflow);
                return *number;
            }
            break;
        default:
            break;
    }
    RaisePlatform(PlatformError::TypeMismatch);
}

std::int16_t Variant::ToInteger() const {
    return RoundTo<std::int16_t>(ToDouble());
}

std::int32_t Variant::ConvertedToLong() const {
    return RoundTo<std::int32_t>(ToDouble());
}

float Variant::ToSingle() const {
    if (Is(VarType::Single)) return single_;
    const double value = ToDouble();
    if (std::isfinite(value) && std::fabs(value) > double{std::numeric_limits<float>::max()}) {
        RaisePlatform(PlatformError::Overflow);
    }
    return static_cast<float>(value);
}

Text Variant::ToText() const {
    switch (Type()) {
        case VarType::Empty:
            return {};
        case VarType::Integer:
            return LongText(integer_);
        case VarType::Long:
            return LongText(long_);
        case VarType::Single:
            return DoubleText(static_cast<double>(single_), 7);
        case VarType::Double:
            return DoubleText(double_);
        case VarType::Currency:
            return CurrencyText(bits_);
        case VarType::Date:
            return DateText(double_);
        case VarType::String:
            return text_;
        case VarType::Error:
            return Text("Error ") + LongText(long_);
        case VarType::Boolean:
            return integer_ != 0 ? "True" : "False";
        case VarType::Decimal:
            return DecimalText(AsDecimal());
        case VarType::Byte:
            return LongText(byte_);
        default:
            RaisePlatform(PlatformError::TypeMismatch);
    }
}

const Array& Variant::AsArray() const {
    if (!IsArray()) RaisePlatform(PlatformError::TypeMismatch);
    return array_;
}

Decimal Variant::AsDecimal() const {
    if (!Is(VarType::Decimal)) RaisePlatform(PlatformError::TypeMismatch);
    return {static_cast<std::uint64_t>(bits_), high_, scale_, negative_};
}

std::int32_t Variant::AsError() const {
    if (!Is(VarType::Error)) RaisePlatform(PlatformError::TypeMismatch);
    return long_;
}

const Ref<Object>& Variant::AsObject() const {
    if (!Is(VarType::Object)) RaisePlatform(PlatformError::TypeMismatch);
    return object_;
}

const Text& Variant::AsText() const {
    if (!Is(VarType::String)) RaisePlatform(PlatformError::TypeMismatch);
    return text_;
}

Object& Variant::TheObject() const {
    if (!AsObject()) RaisePlatform(PlatformError::ObjectNotSet);
    return *object_;
}

std::uint64_t Variant::ScalarBits() const noexcept {
    return Owns() ? 0 : static_cast<std::uint64_t>(bits_) >> ShiftOf(Type());
}

bool operator==(const Variant& left, const Variant& right) {
    if (left.mark_ != right.mark_) return false;
    if (left.Is(VarType::String)) return left.text_ == right.text_;
    if (left.Is(VarType::Object)) return left.object_ == right.object_;
    if (left.IsArray()) return left.array_ == right.array_;
    return std::memcmp(&left, &right, sizeof left) == 0;
}

std::int32_t Variant::RaiseOverflow() {
    RaisePlatform(PlatformError::Overflow);
}

std::ostream& operator<<(std::ostream& out, const Variant& value) {
    if (value.IsNull()) return out << "Null";
    if (value.Type() == VarType::Error) return out << "Error " << value.AsError();
    if (value.IsObject()) {
        const Ref<Object>& object = value.AsObject();
        return out << (object ? object->TypeName() : Text("Nothing"));
    }
    if (!value.IsArray()) return out << value.ToText();
    const Array& array = value.AsArray();
    out << '{';
    for (std::int32_t i = 0; i < array.Count(); ++i) {
        const Variant element = array.At(array.LowerBound() + i);
        out << (i == 0 ? "" : ", ");
        if (element.IsArray()) {
            out << "{...}";
        } else {
            out << element;
        }
    }
    return out << '}';
}

void PrintTo(const Variant& value, std::ostream* out) {
    *out << "type " << static_cast<int>(value.Type()) << ": " << value;
}

std::string Variant::ToDebugText() const {
    std::ostringstream out;
    PrintTo(*this, &out);
    return std::move(out).str();
}

}  // namespace zorvane
