#pragma once
// What a table throws, and keys in words.

#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "zorvane/platform/Build.h"
#include "zorvane/table/detail/Plain.h"

namespace zorvane::detail {

// std::out_of_range
[[noreturn]] ZORVANE_EXPORT void RaiseNoKey(const std::string& key);
[[noreturn]] ZORVANE_EXPORT void RaiseNoPosition(std::size_t position, std::size_t size);
// std::invalid_argument
[[noreturn]] ZORVANE_EXPORT void RaiseKeyInUse(const std::string& key);
// std::length_error
[[noreturn]] ZORVANE_EXPORT void RaiseFull();

[[nodiscard]] ZORVANE_EXPORT std::string Quoted(std::string_view key);
[[nodiscard]] ZORVANE_EXPORT std::string Quoted(std::u16string_view key);

// A key as a message shows it; nothing where it has no words.
template <class Key>
[[nodiscard]] std::string KeyWords(const Key& key) {
    if constexpr (std::is_enum_v<Key>) {
        return KeyWords(static_cast<std::underlying_type_t<Key>>(key));
    } else if constexpr (std::is_same_v<Key, bool>) {
        return key ? "true" : "false";
    } else if constexpr (std::is_integral_v<Key>) {
        return std::to_string(key);
    } else if constexpr (std::is_floating_point_v<Key>) {
        char digits[64];
        return {digits, std::to_chars(digits, digits + sizeof digits, key).ptr};
    } else if constexpr (requires { Quoted(Plain(key)); }) {
        return Quoted(Plain(key));
    } else {
        return {};
    }
}

}  // namespace zorvane::detail
