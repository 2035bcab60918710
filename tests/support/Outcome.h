#pragma once
// An operation's outcome as one line, so that a container and its model can be compared at once.

#include <cstdint>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "zorvane/platform/Error.h"

namespace zorvane {

// What the operation gave, or the number, source and description of what it raised.
template <class Operation>
std::string OutcomeOf(Operation&& operation) {
    std::ostringstream line;
    line << std::boolalpha;
    line.exceptions(std::ios::badbit);  // lack of memory is no outcome
    try {
        if constexpr (std::is_void_v<decltype(operation())>) {
            operation();
            line << "done";
        } else {
            line << operation();
        }
    } catch (const Error& error) {
        line << "raised " << error.Number << " | " << error.Source << " | " << error.Description;
    } catch (const std::logic_error& error) {
        line << "raised " << error.what();
    } catch (const std::ios_base::failure&) {
        throw std::bad_alloc();  // what some streams make of it
    }
    return line.str();
}

// The number of the error that the operation raises, or 0.
template <class Operation>
std::int32_t NumberRaisedBy(Operation&& operation) {
    try {
        operation();
    } catch (const Error& error) {
        return error.Number;
    }
    return 0;
}

}  // namespace zorvane
