#pragma once
/// \class zorvane::Error
/// The one exception that library code raises on purpose: a number, a source, a description.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <string>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

/// The platform's own error numbers that this code raises.
enum class PlatformError : std::int32_t {
    InvalidCall = 5,           ///< invalid procedure call or argument
    Overflow = 6,              ///< a number does not fit its type
    OutOfRange = 9,            ///< a position or bound names no element
    TypeMismatch = 13,         ///< a value has no form of the wanted type
    ObjectNotSet = 91,         ///< an object is wanted and there is none
    InvalidValue = 380,        ///< a property does not accept the value
    CannotCreateObject = 429,  ///< no creatable class of that name
    NoSuchMember = 438,        ///< the object has no such property or method
    DuplicateKey = 457,        ///< the key is already in use
};

class ZORVANE_EXPORT Error : public std::exception {
  public:
    /// @{
    /// An empty description is replaced by the platform's default text for the number.
    explicit Error(std::int32_t number, Text source = {}, Text description = {});
    explicit Error(PlatformError number, Text source = {}, Text description = {})
        : Error(static_cast<std::int32_t>(number), std::move(source), std::move(description)) {}
    /// @}

    const char* what() const noexcept override { return what_.c_str(); }

    std::int32_t Number;
    Text Source;
    Text Description;

  private:
    std::string what_;  // the description in UTF-8
};

[[noreturn]] ZORVANE_EXPORT void RaisePlatform(PlatformError number);

/// Resume-next: runs one statement; an Error ends that statement alone. Anything else passes
/// through. Gives whether the statement ran to its end.
template <class Statement>
bool IgnoringErrors(Statement&& statement) {
    try {
        statement();
        return true;
    } catch (const Error&) {
        return false;
    }
}

}  // namespace zorvane
