#pragma once
// Plain: one form for all texts of a kind, and one comparison for all that is compared.

#include <compare>
#include <concepts>
#include <limits>
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

// The integers that std::in_range takes.
template <class T>
concept Countable = std::integral<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char> &&
                    !std::is_same_v<T, wchar_t> && !std::is_same_v<T, char8_t> &&
                    !std::is_same_v<T, char16_t> && !std::is_same_v<T, char32_t>;

template <class T>
[[nodiscard]] std::weak_ordering CompareFloats(T left, T right) noexcept {
    if (left < right) return std::weak_ordering::less;
    if (left > right) return std::weak_ordering::greater;
    if (left == right) return std::weak_ordering::equivalent;
    // What is no number stands behind all that are.
    return (left != left) <=> (right != right);
}

// How two values stand to one another; a total order for values of one type, unless their own
// operators fail to be one.
template <class A, class B>
[[nodiscard]] std::weak_ordering CompareValues(const A& left, const B& right) {
    using Left = PlainOf<A>;
    using Right = PlainOf<B>;
    if constexpr (!std::is_same_v<Left, A> || !std::is_same_v<Right, B>) {
        return CompareValues<Left, Right>(Plain(left), Plain(right));
    } else if constexpr (Countable<A> && Countable<B>) {
        if (std::cmp_less(left, right)) return std::weak_ordering::less;
        return std::cmp_less(right, left) ? std::weak_ordering::greater
                                          : std::weak_ordering::equivalent;
    } else if constexpr (std::is_arithmetic_v<A> && std::is_arithmetic_v<B>) {
        using Common = std::common_type_t<A, B>;
        if constexpr (std::is_floating_point_v<Common>) {
            return CompareFloats(static_cast<Common>(left), static_cast<Common>(right));
        } else {
            return static_cast<Common>(left) <=> static_cast<Common>(right);
        }
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
