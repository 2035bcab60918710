#pragma once
/// \class zorvane::Variant
/// The 16-byte tagged value: a type code and a payload.
///
/// All-zero bytes are Empty. Texts and arrays are shared and immutable behind the value, so a copy
/// is O(1); an object is held by reference. A Variant may be moved as raw bytes
/// (zorvane/platform/Relocate.h).
///
/// Threads: different ones, copies too, may be used at once, and const members of one at once.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Array.h"
#include "zorvane/platform/Build.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Relocate.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/VarType.h"

/// Inline wherever it stands, in code that is optimised at all.
#ifdef __OPTIMIZE__
#define ZORVANE_INLINE [[gnu::always_inline]]
#else
#define ZORVANE_INLINE
#endif

namespace zorvane {

/// (high:low) / 10^scale, negative on request; scale 0..28.
struct Decimal {
    std::uint64_t Low = 0;
    std::uint32_t High = 0;
    std::uint8_t Scale = 0;
    bool Negative = false;
    friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// A whole number of a type that is none of a tagged value's own.
template <class T>
concept OtherInteger =
    std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char> &&
    !std::is_same_v<T, wchar_t> && !std::is_same_v<T, char8_t> && !std::is_same_v<T, char16_t> &&
    !std::is_same_v<T, char32_t> && !std::is_same_v<T, std::uint8_t> &&
    !std::is_same_v<T, std::int16_t> && !std::is_same_v<T, std::int32_t>;

class ZORVANE_EXPORT Variant {
  public:
    using Relocatable = void;

    Variant() noexcept : Variant(VarType::Empty, std::int64_t{0}) {}
    Variant(bool value) noexcept
        : Variant(VarType::Boolean, PayloadOf<std::int16_t>(value ? -1 : 0)) {}
    Variant(std::uint8_t value) noexcept : Variant(VarType::Byte, PayloadOf(value)) {}
    Variant(std::int16_t value) noexcept : Variant(VarType::Integer, PayloadOf(value)) {}
    Variant(std::int32_t value) noexcept : Variant(VarType::Long, PayloadOf(value)) {}
    /// @{
    /// Any other whole number is a Long; raises 6 for one that does not fit.
    template <OtherInteger T>
    Variant(T value)
        : Variant(std::in_range<std::int32_t>(value) ? static_cast<std::int32_t>(value)
                                                     : RaiseOverflow()) {}
    Variant(float value) noexcept : Variant(VarType::Single, PayloadOf(value)) {}
    Variant(double value) noexcept : mark_(MarkOf(VarType::Double)), double_(value) {}
    Variant(Text value) noexcept : mark_(MarkOf(VarType::String)), text_(std::move(value)) {}
    Variant(std::u16string_view units) : Variant(Text(units)) {}
    Variant(const std::u16string& units) : Variant(Text(units)) {}
    Variant(const char16_t* units) : Variant(Text(units)) {}
    Variant(const char* utf8) : Variant(Text(utf8)) {}
    Variant(std::u8string_view utf8) : Variant(Text(utf8)) {}
    Variant(const std::u8string& utf8) : Variant(Text(utf8)) {}
    Variant(const char8_t* utf8) : Variant(Text(utf8)) {}
    Variant(std::string_view utf8) : Variant(Text(utf8)) {}
    Variant(const std::string& utf8) : Variant(Text(utf8)) {}
    Variant(char) = delete;  ///< a character is neither a number nor a text
    Variant(char8_t) = delete;
    Variant(char16_t) = delete;
    Variant(char32_t) = delete;
    Variant(wchar_t) = delete;
    Variant(Array value) noexcept;  ///< Empty for an array of no type
    template <class T>
    requires std::is_base_of_v<Object, T> Variant(const Ref<T>& object)
    noexcept : Variant(Ref<Object>(object)) {}
    Variant(Ref<Object> object) noexcept
        : mark_(MarkOf(VarType::Object)), object_(std::move(object)) {}
    Variant(std::nullptr_t) noexcept : Variant(Ref<Object>()) {}  ///< "no object"
    Variant(const void*) = delete;                                ///< a pointer is not a Boolean
    /// @}
    static Variant FromCurrency(std::int64_t tenThousandths) noexcept {
        return {VarType::Currency, tenThousandths};
    }
    static Variant FromDate(double days) noexcept;
    static Variant FromDecimal(const Decimal& value);  ///< raises 6 for a scale above 28
    static Variant FromError(std::int32_t status) noexcept;
    static Variant Null() noexcept { return {VarType::Null, std::int64_t{0}}; }

    /// @{
    /// A value that counts nothing is its two words; they stay in registers, as nothing here takes
    /// an address.
    Variant(const Variant& other) noexcept : Variant(other.Words()) {
        if (Owns()) [[unlikely]]
            Retain(Type(), bits_);
    }
    Variant(Variant&& other) noexcept : Variant(other.Words()) { other.Assume({}); }
    /// @}
    Variant& operator=(const Variant& other) noexcept {
        Variant copy(other);
        swap(*this, copy);
        return *this;
    }
    Variant& operator=(Variant&& other) noexcept {
        Variant taken(std::move(other));
        swap(*this, taken);
        return *this;
    }
    /// Most values count nothing, and a call would cost more than that question.
    ZORVANE_INLINE ~Variant() {
        if (Owns()) [[unlikely]]
            Release(Type(), bits_);
    }

    [[nodiscard]] VarType Type() const noexcept { return static_cast<VarType>(mark_ & ~kCounted); }
    [[nodiscard]] bool IsArray() const noexcept { return IsArrayType(Type()); }
    [[nodiscard]] bool IsEmpty() const noexcept { return Is(VarType::Empty); }
    [[nodiscard]] bool IsNull() const noexcept { return Is(VarType::Null); }
    /// Integer kinds, floats, currency, decimal, Boolean, Byte and Empty; a text never.
    [[nodiscard]] bool IsNumber() const noexcept;
    [[nodiscard]] bool IsObject() const noexcept { return Is(VarType::Object); }
    [[nodiscard]] bool IsText() const noexcept { return Is(VarType::String); }

    /// Conversions. They raise 13 (no such form: Null, arrays, objects, texts that are no number)
    /// and 6 (out of the type's range); to an integer they round half to even. Empty is 0, "" and
    /// False.
    [[nodiscard]] bool ToBoolean() const;
    [[nodiscard]] std::uint8_t ToByte() const;
    [[nodiscard]] std::int64_t ToCurrency() const;  ///< ten-thousandths
    [[nodiscard]] double ToDouble() const;
    [[nodiscard]] std::int16_t ToInteger() const;
    [[nodiscard]] std::int32_t ToLong() const {
        if (Is(VarType::Long)) [[likely]]
            return long_;
        return ConvertedToLong();
    }
    [[nodiscard]] float ToSingle() const;
    /// Numbers with '.', no grouping, at most 15 significant digits (Single 7); "True" and "False";
    /// dates as "2026-03-01" or "2026-03-01 13:45:10". Never depends on the locale.
    [[nodiscard]] Text ToText() const;

    /// The payload as it stands; raises 13 when the value holds another type.
    [[nodiscard]] const Array& AsArray() const;
    [[nodiscard]] Decimal AsDecimal() const;
    [[nodiscard]] const Ref<Object>& AsObject() const;  ///< possibly "no object"
    [[nodiscard]] const Text& AsText() const;
    [[nodiscard]] std::int32_t AsError() const;
    /// The object that the value refers to; raises 91 when it is "no object", 13 when not an
    /// object.
    [[nodiscard]] Object& TheObject() const;

    /// Unchecked payloads for code that has just looked at Type().
    [[nodiscard]] const Text& TextUnchecked() const noexcept { return text_; }
    [[nodiscard]] std::int32_t LongUnchecked() const noexcept { return long_; }
    [[nodiscard]] std::int16_t IntegerUnchecked() const noexcept { return integer_; }
    /// The payload's eight bytes, little end first, for scalar types; of a Decimal the low part; 0
    /// for anything counted.
    [[nodiscard]] std::uint64_t ScalarBits() const noexcept;
    /// A scalar of `type` whose payload starts with these bytes; Empty for counted and unknown
    /// types and for Decimal.
    [[nodiscard]] static Variant FromScalarBits(VarType type, std::uint64_t bits) noexcept;

    /// Same type and same value; objects by identity, floats bit by bit. Allocates for arrays
    /// within arrays only.
    friend ZORVANE_EXPORT bool operator==(const Variant& left, const Variant& right);
    friend void swap(Variant& left, Variant& right) noexcept {
        const Raw kept = left.Words();
        left.Assume(right.Words());
        right.Assume(kept);
    }
    /// The value as ToText gives it; of what has no text: "Null", an object's TypeName or
    /// "Nothing", "Error n", an array's elements in braces, with "{...}" for an array within.
    friend ZORVANE_EXPORT std::ostream& operator<<(std::ostream& out, const Variant& value);
    /// For whoever looks for a fault: the type's number as well, as in "type 8: abc".
    [[nodiscard]] std::string ToDebugText() const;
    friend ZORVANE_EXPORT void PrintTo(const Variant& value,
                                       std::ostream* out);  // GoogleTest asks for this

  private:
    Variant(VarType type, std::int64_t bits) noexcept : mark_(MarkOf(type)), bits_(bits) {}

    [[nodiscard]] std::int32_t ConvertedToLong() const;
    [[noreturn]] static std::int32_t RaiseOverflow();
    // What a type is kept as: counted ones are marked, so that one question tells them.
    static constexpr std::uint16_t kCounted = 0x8000;
    static constexpr std::uint16_t MarkOf(VarType type) noexcept {
        const bool counted =
            type == VarType::String || type == VarType::Object || IsArrayType(type);
        const auto mark = static_cast<std::uint16_t>(type);
        return counted ? static_cast<std::uint16_t>(mark | kCounted) : mark;
    }
    [[nodiscard]] bool Is(VarType type) const noexcept { return mark_ == MarkOf(type); }
    [[nodiscard]] bool Owns() const noexcept { return (mark_ & kCounted) != 0; }
    // One reference more, or less, to what the payload of a counted type names.
    static void Release(VarType type, std::int64_t payload) noexcept;
    static void Retain(VarType type, std::int64_t payload) noexcept;

    // The value's bytes.
    struct Raw {
        std::uint64_t Head = 0;
        std::uint64_t Payload = 0;
    };
    explicit Variant(const Raw& raw) noexcept : mark_(MarkOf(VarType::Empty)), bits_(0) {
        Assume(raw);
    }
    void Assume(const Raw& raw) noexcept {
        auto* const bytes = reinterpret_cast<std::byte*>(this);
        std::memcpy(bytes, &raw.Head, sizeof raw.Head);
        std::memcpy(bytes + sizeof raw.Head, &raw.Payload, sizeof raw.Payload);
    }
    // A scalar's payload: its bytes first, zeros behind.
    template <class Scalar>
    static std::int64_t PayloadOf(Scalar value) noexcept {
        std::int64_t payload = 0;
        std::memcpy(&payload, &value, sizeof value);
        return payload;
    }
    // Word by word: a value is often read just after its words were written one by one.
    [[nodiscard]] Raw Words() const noexcept {
        const auto* const bytes = reinterpret_cast<const std::byte*>(this);
        Raw raw;
        std::memcpy(&raw.Head, bytes, sizeof raw.Head);
        std::memcpy(&raw.Payload, bytes + sizeof raw.Head, sizeof raw.Payload);
        return raw;
    }

    std::uint16_t mark_;
    std::uint8_t scale_ = 0;  // Decimal only, as are the next two
    bool negative_ = false;
    std::uint32_t high_ = 0;
    union {
        std::int64_t bits_;  // Currency, the low part of Decimal, and all bytes of any scalar
        double double_;      // Double, Date
        float single_;
        std::int32_t long_;     // Long, Error
        std::int16_t integer_;  // Integer, Boolean
        std::uint8_t byte_;
        Text text_;
        Ref<Object> object_;
        Array array_;
    };
};

static_assert(sizeof(Variant) == 16);

/// A tagged value that names an entry: a text is a key, a 16- or 32-bit integer a 1-based position.
struct KeyOrPosition {
    enum class Kind { Key, Position, Neither } Is = Kind::Neither;
    const Text* Key = nullptr;  ///< into the classified value
    std::int32_t Position = 0;
};
[[nodiscard]] inline KeyOrPosition Classify(const Variant& vKeyIndex) noexcept {
    switch (vKeyIndex.Type()) {
        case VarType::String:
            return {KeyOrPosition::Kind::Key, &vKeyIndex.TextUnchecked(), 0};
        case VarType::Long:
            return {KeyOrPosition::Kind::Position, nullptr, vKeyIndex.LongUnchecked()};
        case VarType::Integer:
            return {KeyOrPosition::Kind::Position, nullptr, vKeyIndex.IntegerUnchecked()};
        default:
            return {};
    }
}

}  // namespace zorvane

#undef ZORVANE_INLINE
