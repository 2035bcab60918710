#include "zorvane/runtime/Comparers.h"

#include <cstring>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/NumberText.h"

namespace zorvane::modZorvane {
namespace {

// Values are read by copy: the caller's bytes need no alignment.
template <class T>
T ValueAt(const void* address) noexcept {
    T value;
    std::memcpy(&value, address, sizeof value);
    return value;
}

template <class T>
std::int32_t CompareAs(const void* a, const void* b) noexcept {
    const T left = ValueAt<T>(a);
    const T right = ValueAt<T>(b);
    return left < right ? -1 : left > right ? 1 : 0;
}

std::int32_t CompareUnder(const Text& a, const Text& b, const CompareParameters* parameters) {
    const auto mode = parameters->Mode == 0 ? CompareMode::Binary : CompareMode::Text;
    return CompareTexts(a, b, mode);
}

}  // namespace

std::int32_t CompareInteger(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<std::int16_t>(a, b);
}

std::int32_t CompareLong(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<std::int32_t>(a, b);
}

std::int32_t CompareSingle(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<float>(a, b);
}

std::int32_t CompareDouble(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<double>(a, b);
}

std::int32_t CompareCurrency(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<std::int64_t>(a, b);
}

std::int32_t CompareDate(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<double>(a, b);
}

std::int32_t CompareString(const void* a, const void* b, const CompareParameters* parameters,
                           std::int32_t) {
    return CompareUnder(*static_cast<const Text*>(a), *static_cast<const Text*>(b), parameters);
}

std::int32_t CompareObject(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<std::intptr_t>(a, b);
}

std::int32_t CompareBoolean(const void* a, const void* b, const CompareParameters*, std::int32_t) {
    return CompareAs<std::int64_t>(a, b);
}

std::int32_t CompareVariant(const void* a, const void* b, const CompareParameters* parameters,
                            std::int32_t) {
    return CompareUnder(ComparedText(*static_cast<const Variant*>(a)),
                        ComparedText(*static_cast<const Variant*>(b)), parameters);
}

Comparer ComparerForType(VarType type) noexcept {
    switch (type) {
        case VarType::Integer:
            return CompareInteger;
        case VarType::Long:
            return CompareLong;
        case VarType::Single:
            return CompareSingle;
        case VarType::Double:
            return CompareDouble;
        case VarType::Currency:
            return CompareCurrency;
        case VarType::Date:
            return CompareDate;
        case VarType::String:
            return CompareString;
        case VarType::Object:
            return CompareObject;
        case VarType::Boolean:
            return CompareBoolean;
        case VarType::Variant:
            return CompareVariant;
        default:
            return nullptr;
    }
}

Text ComparedText(const Variant& value) {
    if (!value.IsObject()) return value.ToText();
    return LongText(reinterpret_cast<std::intptr_t>(value.AsObject().Get()));
}

std::intptr_t FunctionAddress(Comparer comparer) noexcept {
    return reinterpret_cast<std::intptr_t>(comparer);
}

std::uint32_t AddOffset(const std::uint32_t& address, const std::uint32_t& offset) noexcept {
    return address + offset;
}

}  // namespace zorvane::modZorvane
