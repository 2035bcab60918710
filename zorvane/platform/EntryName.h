#pragma once
/// \file
/// What names an entry where a tagged value does: a key in any form of text, a position of any type
/// of integer.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Relocate.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

/// What a vKeyIndex may be: whatever is, or makes, a tagged value.
template <class T>
concept NamesEntry = std::is_convertible_v<const T&, Variant>;

/// A position whose type alone tells that it is one.
template <class T>
concept WholePosition = std::is_same_v<T, std::int32_t> || OtherInteger<T>;

/// A key that no Text has been made of: UTF-8 or UTF-16 in any view, string or literal.
template <class T>
concept PlainKey = !std::is_base_of_v<Variant, T> && !std::is_same_v<T, Text> &&
                   !std::is_same_v<T, std::nullptr_t> &&
                   (std::is_convertible_v<const T&, std::string_view> ||
                    std::is_convertible_v<const T&, std::u16string_view> ||
                    std::is_convertible_v<const T&, std::u8string_view>);

/// \cond

// Whether a look-up by this has nothing to make that could fail.
template <class T>
inline constexpr bool kNamesAtOnce =
    std::is_base_of_v<Variant, T> || std::is_same_v<T, Text> || WholePosition<T>;

// The position itself, or the nearest of 32 bits, where no entry ever stands.
template <WholePosition T>
[[nodiscard]] constexpr std::int32_t AsPosition(T position) noexcept {
    if (std::in_range<std::int32_t>(position)) [[likely]]
        return static_cast<std::int32_t>(position);
    return std::cmp_less(position, 0) ? std::numeric_limits<std::int32_t>::min()
                                      : std::numeric_limits<std::int32_t>::max();
}
// The number as a tagged value: one that no Long holds is a Decimal, which is no position and has
// the text that an error shows.
template <WholePosition T>
[[nodiscard]] Variant WholeNumber(T value) {
    if (std::in_range<std::int32_t>(value)) return static_cast<std::int32_t>(value);
    const auto bits = static_cast<std::uint64_t>(value);
    const bool negative = std::cmp_less(value, 0);
    return Variant::FromDecimal({.Low = negative ? 0 - bits : bits, .Negative = negative});
}

// A key as a look-up takes it, that lives no longer than the look-up: its units lie in here, unless
// they are very many, and nothing is allocated. No look-up keeps the text.
class ZORVANE_EXPORT KeyInPlace {
  public:
    explicit KeyInPlace(std::u16string_view units);
    explicit KeyInPlace(std::string_view utf8);
    explicit KeyInPlace(std::u8string_view utf8)
        : KeyInPlace(std::string_view(reinterpret_cast<const char*>(utf8.data()), utf8.size())) {}
    KeyInPlace(const KeyInPlace&) = delete;
    KeyInPlace& operator=(const KeyInPlace&) = delete;

    operator const Variant&() const noexcept { return value_; }

  private:
    static constexpr std::size_t kMostUnits = 256;

    template <class Fill>
    [[nodiscard]] Text Make(std::size_t length, Fill&& fill);

    alignas(
        Text::Block) std::byte place_[offsetof(Text::Block, units) + kMostUnits * sizeof(char16_t)];
    Variant value_;
};

// A text as a tagged value, with no share in it: it lives no longer than the look-up, which would
// count and uncount it for nothing.
class BorrowedKey {
  public:
    explicit BorrowedKey(const Text& key) noexcept {
        union Alias {
            Alias() {}
            ~Alias() {}
            Text text;
        } alias;
        RelocateOne(&alias.text, &key);
        std::construct_at(&value_, std::move(alias.text));
    }
    BorrowedKey(const BorrowedKey&) = delete;
    BorrowedKey& operator=(const BorrowedKey&) = delete;
    ~BorrowedKey() {}  // lets nothing go

    operator const Variant&() const noexcept { return value_; }

  private:
    union {
        Variant value_;
    };
};

// What a look-up goes by.
template <NamesEntry T>
[[nodiscard]] decltype(auto) NameOf(const T& vKeyIndex) {
    if constexpr (std::is_base_of_v<Variant, T>) {
        return static_cast<const Variant&>(vKeyIndex);
    } else if constexpr (!PlainKey<T>) {
        if constexpr (WholePosition<T>) {
            return WholeNumber(vKeyIndex);
        } else if constexpr (std::is_same_v<T, Text>) {
            return BorrowedKey(vKeyIndex);
        } else {
            return Variant(vKeyIndex);
        }
    } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
        return KeyInPlace(std::string_view(vKeyIndex));
    } else if constexpr (std::is_convertible_v<const T&, std::u16string_view>) {
        return KeyInPlace(std::u16string_view(vKeyIndex));
    } else {
        return KeyInPlace(std::u8string_view(vKeyIndex));
    }
}
// The same for a class that converts whatever is no key to a position.
template <NamesEntry T>
[[nodiscard]] decltype(auto) ConvertibleNameOf(const T& vKeyIndex) {
    if constexpr (WholePosition<T>) {
        return Variant(AsPosition(vKeyIndex));
    } else {
        return NameOf(vKeyIndex);
    }
}
/// \endcond

}  // namespace zorvane
