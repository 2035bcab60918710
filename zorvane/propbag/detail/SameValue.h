#pragma once
// When a property equals its default, so that it need not be stored.

#include "zorvane/platform/Variant.h"

namespace zorvane {

// Numbers, dates and Booleans by value, whatever their types (True is -1, False 0); texts when
// identical, unit by unit; Empty equals only Empty, an error code only the same code. Null,
// objects, arrays and not-a-number equal nothing. Currency, decimals and integers compare exactly,
// anything with a floating-point number as 64-bit floats.
[[nodiscard]] bool SameValue(const Variant& left, const Variant& right);

}  // namespace zorvane
