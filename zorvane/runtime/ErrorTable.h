#pragma once
/// \file
/// The failures of the generated classes: numbers, message texts, and how one error is composed.

#include <array>
#include <cstdint>
#include <string_view>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

/// Class error numbers are counted from here.
inline constexpr std::int32_t kObjectErrorBase = -2147221504;

/// What a generated class can fail with; the value is added to kObjectErrorBase.
enum class Failure : std::int32_t {
    NoItem = 28500,       ///< no entry matches the key or position
    KeyPresent = 28501,   ///< the key is in use
    Unknown = 28502,      ///< any other failure of Add
    BadPosition = 28503,  ///< Before or After of Add names no entry or has a wrong type
};

/// The message of a failure, blanks and all.
[[nodiscard]] ZORVANE_EXPORT std::u16string_view MessageOf(Failure failure) noexcept;

/// Messages that belong to the same set and that no operation raises.
inline constexpr std::array<std::u16string_view, 4> kSpareMessages = {
    u" Invalid Window Handle.", u" Object not set.", u" Invalid Index. ",
    u"Could not create Object"};

/// What stands between the message and the offending argument.
inline constexpr std::u16string_view kKeyLabel = u"Key = ";
inline constexpr std::u16string_view kKeyIndexLabel = u"KeyIndex = ";
inline constexpr std::u16string_view kIndexLabel = u"Index = ";

/// Raises kObjectErrorBase + failure with the source `className` + `member` (such as "::Item") and
/// the description message + label + argument, nothing in between. An argument that has no text
/// form (Null, an array, an object) is shown as nothing.
[[noreturn]] ZORVANE_EXPORT void RaiseFailure(Failure failure, const Text& className,
                                              std::u16string_view member, std::u16string_view label,
                                              const Variant& argument);

/// What Add returns instead of raising.
/// Kept: the code of an unknown failure is -28500, although the number raised for it is 28502.
[[nodiscard]] constexpr std::int16_t QuietCode(Failure failure) noexcept {
    const Failure shown = failure == Failure::Unknown ? Failure::NoItem : failure;
    return static_cast<std::int16_t>(-static_cast<std::int32_t>(shown));
}

}  // namespace zorvane
