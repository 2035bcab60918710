#pragma once
// Plain: one form for all texts of a kind, and one comparison for all that is compared.

#include <compare>
#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Text.h"

namespace zorvane::detail {

template <class T, class Unit>
inline constexpr bool kIsUnits =
    std::is_same_v<T, std::basic_string_view<Unit>> || std::is_same_v<std::decay_t<T>, Unit*> ||
    std::is_same_v<std::decay_t<T>, const Unit*>;
template <class Unit, class Allocator>
inline constexpr bool kIsUnits<std::basic_string<Unit, std::char_traits<Unit>, Allocator>, Unit> =
    true;
template <>
inline constexpr bool kIsUnits<Text, char16_t> = true;

// The standard's and this library's texts as views; a type of the user's that can become a view may
// have an order of its own, so it stays what it is.
template <class T>
struct PlainForm {
    using Type = T;
};
template <class T>
requires kIsUnits<T, char>
struct PlainForm<T> {
    using Type = std::string_view;
};
template <class T>
requires kIsUnits<T, char16_t>
struct PlainForm<T> {
    using Type = std::u16string_view;
};
template <class T>
using PlainOf = typename PlainForm<std::remove_cvref_t<T>>::Type;

template <class T>
[[nodiscard]] constexpr std::conditional_t<std::is_same_v<PlainOf<T>, T>, const T&, PlainOf<T>>
Plain(const T& value) noexcept {
    return value;
}

template <class T>
[[nodiscard]] std::weak_ordering CompareFloats(T left, T right) noexcept {
    if (left < right) return std::weak_ordering::less;
    if (left > right) return std::weak_ordering::greater;
    if (left == right) return std::weak_ordering::equivalent;
    // What is no number stands behind all that are.
    return (left != left) <=> (right != right);
}

// A whole number and another, neither of which every number of the other's type can be.
template <std::integral Whole, std::floating_point Float>
[[nodiscard]] std::weak_ordering CompareWholeWith(Whole whole, Float number) noexcept {
    constexpr auto kPast =
        static_cast<Float>(Whole{1} << (std::numeric_limits<Whole>::digits - 1)) * 2;
    constexpr Float kLeast = std::is_signed_v<Whole> ? -kPast : Float{0};
    // Behind all numbers stands what is none.
    if (!(number < kPast)) return std::weak_ordering::less;
    if (number < kLeast) return std::weak_ordering::greater;
    const auto towardsZero = static_cast<Whole>(number);
    if (whole != towardsZero) return whole <=> towardsZero;
    return CompareFloats(static_cast<Float>(towardsZero), number);
}

// Numbers of any two types, by value.
template <class A, class B>
requires std::is_arithmetic_v<A> && std::is_arithmetic_v<B>
[[nodiscard]] std::weak_ordering CompareNumbers(A left, B right) noexcept {
    if constexpr (std::integral<A> && std::integral<B>) {
        // Promoted, a letter and a truth value are numbers like others.
        if (std::cmp_less(+left, +right)) return std::weak_ordering::less;
        return std::cmp_less(+right, +left) ? std::weak_ordering::greater
                                            : std::weak_ordering::equivalent;
    } else if constexpr (std::integral<A>) {
        return CompareWholeWith(+left, right);
    } else if constexpr (std::integral<B>) {
        return 0 <=> CompareWholeWith(+right, left);
    } else {
        using Common = std::common_type_t<A, B>;
        return CompareFloats(static_cast<Common>(left), static_cast<Common>(right));
    }
}

// The same number in another type; none where that has no such number.
template <class To, class From>
requires std::is_arithmetic_v<To> && std::is_arithmetic_v<From>
[[nodiscard]] std::optional<To> SameNumber(From value) noexcept {
    using Limits = std::numeric_limits<To>;
    // A conversion beyond the limits is undefined; and none of them holds what is no number.
    if (CompareNumbers(value, Limits::lowest()) < 0 || CompareNumbers(value, Limits::max()) > 0) {
        if constexpr (std::floating_point<To> && std::floating_point<From>) {
            if (value == std::numeric_limits<From>::infinity()) return Limits::infinity();
            if (value == -std::numeric_limits<From>::infinity()) return -Limits::infinity();
        }
        return std::nullopt;
    }
    const auto converted = static_cast<To>(value);
    return CompareNumbers(converted, value) == 0 ? std::optional(converted) : std::nullopt;
}

// Values that tell by themselves how they stand to one another.
template <class A, class B>
concept OrderedWith = requires(const A& left, const B& right) {
    { left <=> right } -> std::convertible_to<std::weak_ordering>;
}
|| requires(const A& left, const B& right) {
    left < right;
    right < left;
};
// The same by the form that they are compared in, or by what the second makes of the first's type.
template <class A, class B>
inline constexpr bool kCompares =
    (std::is_arithmetic_v<A> && std::is_arithmetic_v<B>) || OrderedWith<PlainOf<A>, PlainOf<B>> ||
    (std::is_same_v<PlainOf<A>, std::u16string_view> && std::is_constructible_v<Text, const B&>) ||
    (OrderedWith<PlainOf<A>, PlainOf<A>> && std::is_constructible_v<A, const B&>);

// How two values stand to one another; a total order for values of one type, unless their own
// operators fail to be one.
template <class A, class B>
[[nodiscard]] std::weak_ordering CompareValues(const A& left, const B& right) {
    static_assert(kCompares<A, B>, "values that cannot be compared with the column's");
    using Left = PlainOf<A>;
    using Right = PlainOf<B>;
    if constexpr (!std::is_same_v<Left, A> || !std::is_same_v<Right, B>) {
        return CompareValues<Left, Right>(Plain(left), Plain(right));
    } else if constexpr (std::is_arithmetic_v<A> && std::is_arithmetic_v<B>) {
        return CompareNumbers(left, right);
    } else if constexpr (requires {
                             { left <=> right } -> std::convertible_to<std::weak_ordering>;
                         }) {
        return left <=> right;
    } else if constexpr (requires {
                             left < right;
                             right < left;
                         }) {
        if (left < right) return std::weak_ordering::less;
        return right < left ? std::weak_ordering::greater : std::weak_ordering::equivalent;
    } else if constexpr (std::is_same_v<A, std::u16string_view>) {
        return left <=> Text(right).Units();
    } else {
        return CompareValues(left, A(right));
    }
}

}  // namespace zorvane::detail
