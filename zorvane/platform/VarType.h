#pragma once
/// \file
/// VarType: what a tagged value holds. The numbers are part of the stored format.

#include <cstddef>
#include <cstdint>

#include "zorvane/platform/Build.h"

namespace zorvane {

enum class VarType : std::uint16_t {
    Empty = 0,
    Null = 1,
    Integer = 2,         ///< signed 16-bit
    Long = 3,            ///< signed 32-bit
    Single = 4,          ///< 32-bit float
    Double = 5,          ///< 64-bit float
    Currency = 6,        ///< signed 64-bit, in ten-thousandths
    Date = 7,            ///< 64-bit float, days since 30 December 1899
    String = 8,          ///< Text
    Object = 9,          ///< `Ref<Object>`, possibly to no object
    Error = 10,          ///< 32-bit status code
    Boolean = 11,        ///< 16-bit, -1 or 0
    Variant = 12,        ///< as an array's element type only
    Decimal = 14,        ///< 96-bit integer, sign, power of ten
    Byte = 17,           ///< unsigned 8-bit
    ArrayFlag = 0x2000,  ///< added to the element type
};

constexpr VarType operator|(VarType left, VarType right) noexcept {
    return static_cast<VarType>(static_cast<std::uint16_t>(left) |
                                static_cast<std::uint16_t>(right));
}
constexpr bool IsArrayType(VarType type) noexcept {
    return (static_cast<std::uint16_t>(type) & 0x2000u) != 0;
}

/// Bytes of a scalar's value; 0 for texts, objects, arrays and types without a value.
constexpr std::size_t ScalarWidth(VarType type) noexcept {
    switch (type) {
        case VarType::Integer:
        case VarType::Boolean:
            return 2;
        case VarType::Long:
        case VarType::Single:
        case VarType::Error:
            return 4;
        case VarType::Double:
        case VarType::Currency:
        case VarType::Date:
            return 8;
        case VarType::Byte:
            return 1;
        default:
            return 0;
    }
}

}  // namespace zorvane
