#pragma once
// ReadDouble: std::from_chars for a double, where the standard library has it for integers alone.

#include <charconv>

namespace zorvane {

// The same answer, to the last bit, by way of a stream, and so some thirty times slower. Words such
// as "inf" are none of its business.
std::from_chars_result ReadDoubleByStream(const char* first, const char* last, double& value);

template <class Number>
std::from_chars_result ReadDouble(const char* first, const char* last, Number& value) {
    if constexpr (requires { std::from_chars(first, last, value); }) {
        return std::from_chars(first, last, value);
    } else {
        return ReadDoubleByStream(first, last, value);
    }
}

}  // namespace zorvane
