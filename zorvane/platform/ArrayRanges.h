#pragma once
/// \file
/// Arrays out of ranges, and ranges out of arrays.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <ranges>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "zorvane/platform/Array.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

/// How an array keeps a C++ type: as which element type, and as what in memory.
template <class T>
struct ArrayElement {
    static_assert(std::is_convertible_v<T, Text>, "no array has elements of this type");
    static constexpr VarType kType = VarType::String;
    using Kept = Text;
};
template <VarType Type, class T>
struct ArrayElementAs {
    static constexpr VarType kType = Type;
    using Kept = T;
};
template <>
struct ArrayElement<bool> : ArrayElementAs<VarType::Boolean, std::int16_t> {};
template <>
struct ArrayElement<std::uint8_t> : ArrayElementAs<VarType::Byte, std::uint8_t> {};
template <>
struct ArrayElement<std::int16_t> : ArrayElementAs<VarType::Integer, std::int16_t> {};
template <>
struct ArrayElement<std::int32_t> : ArrayElementAs<VarType::Long, std::int32_t> {};
template <OtherInteger T>
struct ArrayElement<T> : ArrayElementAs<VarType::Long, std::int32_t> {};
template <>
struct ArrayElement<float> : ArrayElementAs<VarType::Single, float> {};
template <>
struct ArrayElement<double> : ArrayElementAs<VarType::Double, double> {};
template <>
struct ArrayElement<Variant> : ArrayElementAs<VarType::Variant, Variant> {};
template <class T>
struct ArrayElement<Ref<T>> : ArrayElementAs<VarType::Object, Ref<Object>> {};

/// The elements of a range, at positions from `lower` on. Whole numbers that no element type has
/// are Long; raises 6 for one that does not fit, and for more elements than an array counts. O(n).
template <std::ranges::input_range Range>
[[nodiscard]] Array ArrayOf(Range&& range, std::int32_t lower = 0) {
    using Value = std::remove_cvref_t<std::ranges::range_value_t<Range>>;
    using Kept = typename ArrayElement<Value>::Kept;
    if constexpr (!std::ranges::forward_range<Range>) {
        std::vector<Value> values;
        std::ranges::copy(range, std::back_inserter(values));
        return ArrayOf(values, lower);
    } else {
        const Variant count(static_cast<std::int64_t>(std::ranges::distance(range)));
        Array array(ArrayElement<Value>::kType, lower, count.ToLong());
        const auto keep = [](const Value& value) -> Kept {
            if constexpr (std::is_same_v<Value, bool>) {
                return value ? -1 : 0;
            } else if constexpr (OtherInteger<Value>) {
                return Variant(value).ToLong();
            } else {
                return static_cast<Kept>(value);
            }
        };
        std::ranges::transform(range, array.MutableElements<Kept>().begin(), keep);
        return array;
    }
}

/// A tagged value as a C++ type; raises 13 as its conversions do, and 6 for what does not fit the
/// type. To a whole number as ToLong: half to even; to one of more than 32 bits by way of a double.
template <class T>
[[nodiscard]] T ConvertTo(const Variant& value) {
    if constexpr (std::is_same_v<T, Variant>) {
        return value;
    } else if constexpr (std::is_same_v<T, bool>) {
        return value.ToBoolean();
    } else if constexpr (std::is_integral_v<T> && std::numeric_limits<T>::digits < 32) {
        const std::int32_t number = value.ToLong();
        if (!std::in_range<T>(number)) RaisePlatform(PlatformError::Overflow);
        return static_cast<T>(number);
    } else if constexpr (std::is_integral_v<T>) {
        // Of both limits, the powers of two are exact in a double.
        const double number = std::nearbyint(value.ToDouble());
        const double beyond = std::ldexp(1.0, std::numeric_limits<T>::digits);
        if (!(number >= (std::is_signed_v<T> ? -beyond : 0.0) && number < beyond)) {
            RaisePlatform(PlatformError::Overflow);
        }
        return static_cast<T>(number);
    } else if constexpr (std::is_same_v<T, float>) {
        return value.ToSingle();
    } else if constexpr (std::is_same_v<T, double>) {
        return value.ToDouble();
    } else if constexpr (std::is_same_v<T, std::string>) {
        return value.ToText().ToUtf8();
    } else {
        return T(value.ToText());
    }
}

/// An array's elements, each converted. O(n).
template <class T>
[[nodiscard]] std::vector<T> VectorOf(const Array& array) {
    std::vector<T> elements;
    elements.reserve(static_cast<std::size_t>(array.Count()));
    for (std::int32_t i = 0; i < array.Count(); ++i) {
        elements.push_back(ConvertTo<T>(array.At(array.LowerBound() + i)));
    }
    return elements;
}

}  // namespace zorvane
