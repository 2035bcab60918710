#include "zorvane/propbag/detail/SameValue.h"

namespace zorvane {
namespace {

bool IsFloat(const Variant& value) {
    return value.Type() == VarType::Single || value.Type() == VarType::Double ||
           value.Type() == VarType::Date;
}

bool IsNumeric(const Variant& value) {
    return (value.IsNumber() && !value.IsEmpty()) || value.Type() == VarType::Date;
}

struct Quotient {
    Decimal Value;
    std::uint32_t Rest;
};

// A tenth of the number, 32 bits at a time; scale and sign stay.
Quotient Tenth(const Decimal& value) {
    const std::uint64_t middle = (std::uint64_t{value.High % 10} << 32) | (value.Low >> 32);
    const std::uint64_t low = (middle % 10 << 32) | (value.Low & 0xFFFFFFFF);
    return {{.Low = (middle / 10 << 32) | low / 10,
             .High = value.High / 10,
             .Scale = value.Scale,
             .Negative = value.Negative},
            static_cast<std::uint32_t>(low % 10)};
}

// The one form of a number that is not a float: no trailing zero behind the point, 0 without sign.
Decimal Exact(const Variant& value) {
    Decimal exact;
    if (value.Type() == VarType::Decimal) {
        exact = value.AsDecimal();
    } else {
        const bool currency = value.Type() == VarType::Currency;
        const std::int64_t number = currency ? value.ToCurrency() : value.ToLong();
        exact.Negative = number < 0;
        exact.Low = static_cast<std::uint64_t>(number);
        if (exact.Negative) exact.Low = 0 - exact.Low;
        exact.Scale = currency ? 4 : 0;
    }
    if (exact.Low == 0 && exact.High == 0) return {};
    for (Quotient tenth = Tenth(exact); exact.Scale > 0 && tenth.Rest == 0; tenth = Tenth(exact)) {
        exact = tenth.Value;
        --exact.Scale;
    }
    return exact;
}

}  // namespace

bool SameValue(const Variant& left, const Variant& right) {
    if (IsNumeric(left) && IsNumeric(right)) {
        if (IsFloat(left) || IsFloat(right)) return left.ToDouble() == right.ToDouble();
        return Exact(left) == Exact(right);
    }
    if (left.Type() != right.Type()) return false;
    switch (left.Type()) {
        case VarType::Empty:
            return true;
        case VarType::String:
            return left.TextUnchecked() == right.TextUnchecked();
        case VarType::Error:
            return left.AsError() == right.AsError();
        default:
            return false;
    }
}

}  // namespace zorvane
