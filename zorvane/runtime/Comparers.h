#pragma once
/// \file
/// One comparison routine per value type, all of one shape, so that one indirect call reaches any.

#include <cstdint>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Variant.h"

namespace zorvane::modZorvane {

/// What a comparer's third argument points at.
struct CompareParameters {
    std::int32_t Mode;        ///< 0 binary, 1 text; read by CompareString and CompareVariant alone
    std::int32_t Descending;  ///< -1 or 0; no comparer reads it
};

/// Takes the addresses of value A, of value B and of the parameters, and a fourth argument that is
/// always 0. Gives -1 when A comes before B, 0 when equal, 1 when A comes after B.
using Comparer = std::int32_t (*)(const void* a, const void* b, const CompareParameters* parameters,
                                  std::int32_t unused);

ZORVANE_EXPORT std::int32_t CompareInteger(const void* a, const void* b, const CompareParameters*,
                                           std::int32_t);
ZORVANE_EXPORT std::int32_t CompareLong(const void* a, const void* b, const CompareParameters*,
                                        std::int32_t);
/// Floats: unordered counts as equal.
ZORVANE_EXPORT std::int32_t CompareSingle(const void* a, const void* b, const CompareParameters*,
                                          std::int32_t);
ZORVANE_EXPORT std::int32_t CompareDouble(const void* a, const void* b, const CompareParameters*,
                                          std::int32_t);
ZORVANE_EXPORT std::int32_t CompareCurrency(const void* a, const void* b, const CompareParameters*,
                                            std::int32_t);
ZORVANE_EXPORT std::int32_t CompareDate(const void* a, const void* b, const CompareParameters*,
                                        std::int32_t);
/// Two Text under the mode.
ZORVANE_EXPORT std::int32_t CompareString(const void* a, const void* b, const CompareParameters*,
                                          std::int32_t);
/// Two `Ref<Object>` by address.
ZORVANE_EXPORT std::int32_t CompareObject(const void* a, const void* b, const CompareParameters*,
                                          std::int32_t);
/// Kept: reads eight bytes at each address, as CompareCurrency does, although a Boolean has two:
/// both sides must have eight readable bytes, and what follows the Boolean decides with it.
ZORVANE_EXPORT std::int32_t CompareBoolean(const void* a, const void* b, const CompareParameters*,
                                           std::int32_t);
/// Two Variant by their texts (an object: its address as decimal text); numbers order as text.
/// Raises 13 for a value without a text form.
ZORVANE_EXPORT std::int32_t CompareVariant(const void* a, const void* b, const CompareParameters*,
                                           std::int32_t);

/// The comparer for a type code; null for every code without one.
[[nodiscard]] ZORVANE_EXPORT Comparer ComparerForType(VarType type) noexcept;

/// The text that CompareVariant compares a value by. Raises 13.
[[nodiscard]] ZORVANE_EXPORT Text ComparedText(const Variant& value);

/// Turns a routine's address into a plain number.
[[nodiscard]] ZORVANE_EXPORT std::intptr_t FunctionAddress(Comparer comparer) noexcept;
/// The 32-bit sum of an address and an offset; wraps and never raises.
[[nodiscard]] ZORVANE_EXPORT std::uint32_t AddOffset(const std::uint32_t& address,
                                                     const std::uint32_t& offset) noexcept;

}  // namespace zorvane::modZorvane
