#pragma once
/// \class zorvane::Font
/// The platform's font object: eight values that a window can be asked for by name.
///
/// The values stand for themselves: Bold does not follow Weight, nothing is clamped or looked up.
/// Whoever shows text maps them to what the machine has.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstdint>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

struct FontValue {
    Text Name;
    double Size = 8.25;         ///< points
    std::int16_t Weight = 400;  ///< 400 plain, 700 bold
    bool Bold = false;
    std::int16_t Charset = 0;
    bool Italic = false;
    bool Strikethrough = false;
    bool Underline = false;

    friend bool operator==(const FontValue&, const FontValue&) = default;
};

class ZORVANE_EXPORT Font : public Object {
  public:
    Font() = default;
    explicit Font(FontValue value) : Value(std::move(value)) {}

    [[nodiscard]] Text TypeName() const override { return u"Font"; }

    /// The eight values by name. Get and Set raise 438 for any other name; Set raises 13 or 6 for a
    /// value that does not convert to the property's type, and then changes nothing.
    Variant Get(std::u16string_view member, Arguments arguments = {}) override;
    void Set(std::u16string_view member, const Variant& value, Arguments arguments = {}) override;

    FontValue Value;
};

}  // namespace zorvane
