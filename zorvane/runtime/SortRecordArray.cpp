#include "zorvane/runtime/SortRecordArray.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

#include "zorvane/runtime/detail/GapSort.h"
#include "zorvane/runtime/detail/RankedOrder.h"

namespace zorvane::modZorvane {
namespace {

using FieldAt = std::function<const void*(std::uint32_t)>;

CompareMode ModeOf(std::int32_t mode) noexcept {
    return mode == 0 ? CompareMode::Binary : CompareMode::Text;
}

std::vector<std::uint32_t> OrderOfLongs(std::size_t count, const FieldAt& fieldAt,
                                        bool descending) {
    std::vector<std::int32_t> values(count);
    for (std::uint32_t i = 0; i < count; ++i) std::memcpy(&values[i], fieldAt(i), sizeof values[i]);
    return RankedOrder(values, descending);
}

std::vector<std::uint32_t> OrderOfTexts(std::size_t count, const FieldAt& fieldAt,
                                        std::int32_t mode, bool descending) {
    std::vector<std::u16string_view> texts(count);
    for (std::uint32_t i = 0; i < count; ++i) texts[i] = *static_cast<const Text*>(fieldAt(i));
    return RankedOrder(texts, ModeOf(mode), descending);
}

// A number below every other for each text of an integer, in the order of the texts: eleven places
// of a sign or a digit, the first the highest, those behind the last the lowest.
std::uint64_t OrderOfDigits(std::int32_t value) {
    constexpr std::size_t kPlaces = 11;
    std::array<char, kPlaces> text{};
    const char* const end = std::to_chars(text.data(), text.data() + kPlaces, value).ptr;
    std::uint64_t order = 0;
    for (const char* at = text.data(); at != text.data() + kPlaces; ++at) {
        const int place = at >= end ? 0 : *at == '-' ? 1 : *at - '0' + 2;
        order = order * 12 + static_cast<std::uint64_t>(place);
    }
    return order;
}

// Each value is turned into text once, not once per comparison, and all of it into one block; where
// all are 32-bit integers, not even that.
std::vector<std::uint32_t> OrderOfVariants(std::size_t count, const FieldAt& fieldAt,
                                           std::int32_t mode, bool descending) {
    std::vector<const Variant*> values(count);
    for (std::uint32_t i = 0; i < count; ++i) values[i] = static_cast<const Variant*>(fieldAt(i));
    const auto isLong = [](const Variant* value) { return value->Type() == VarType::Long; };
    if (std::ranges::all_of(values, isLong)) {
        std::vector<std::uint64_t> orders(count);
        std::ranges::transform(values, orders.begin(), [](const Variant* value) {
            return OrderOfDigits(value->LongUnchecked());
        });
        return RankedOrder(orders, descending);
    }
    std::u16string units;
    std::vector<std::size_t> ends(count);
    for (std::size_t i = 0; i < count; ++i) {
        units += ComparedText(*values[i]).Units();
        ends[i] = units.size();
    }
    std::vector<std::u16string_view> texts(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t begin = i == 0 ? 0 : ends[i - 1];
        texts[i] = std::u16string_view(units).substr(begin, ends[i] - begin);
    }
    return RankedOrder(texts, ModeOf(mode), descending);
}

}  // namespace

std::vector<std::uint32_t> SortedOrder(std::size_t count,
                                       const std::function<const void*(std::uint32_t)>& fieldAt,
                                       Comparer comparer, std::int32_t mode, bool descending) {
    // One value is not looked at: it may have no text to be compared by.
    if (count > 1 && comparer == CompareLong) return OrderOfLongs(count, fieldAt, descending);
    if (count > 1 && comparer == CompareString)
        return OrderOfTexts(count, fieldAt, mode, descending);
    if (count > 1 && comparer == CompareVariant) {
        return OrderOfVariants(count, fieldAt, mode, descending);
    }
    struct Element {
        const void* field;
        std::uint32_t index;
    };
    std::vector<Element> elements(count);
    for (std::uint32_t i = 0; i < count; ++i) elements[i] = {fieldAt(i), i};
    const CompareParameters parameters{mode, descending ? -1 : 0};
    GapSort(elements, descending, [&](const Element& a, const Element& b) {
        return comparer(a.field, b.field, &parameters, 0);
    });
    std::vector<std::uint32_t> order(count);
    for (std::size_t i = 0; i < count; ++i) order[i] = elements[i].index;
    return order;
}

void SortRecordArray(void* records, std::int32_t count, std::size_t recordSize, Comparer comparer,
                     std::size_t offset, std::int32_t mode, bool descending) {
    if (count < 2) return;
    auto* const bytes = static_cast<std::byte*>(records);
    const auto size = static_cast<std::size_t>(count);
    const std::vector<std::uint32_t> order = SortedOrder(
        size, [&](std::uint32_t i) { return bytes + i * recordSize + offset; }, comparer, mode,
        descending);
    const std::vector<std::byte> before(bytes, bytes + size * recordSize);
    for (std::size_t i = 0; i < size; ++i) {
        std::memcpy(bytes + i * recordSize, before.data() + order[i] * recordSize, recordSize);
    }
}

}  // namespace zorvane::modZorvane
