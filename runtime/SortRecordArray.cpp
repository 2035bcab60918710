#include "runtime/SortRecordArray.h"

#include <cstring>

namespace zorvane::modZorvane {

std::vector<std::uint32_t> SortedOrder(std::size_t count,
                                       const std::function<const void*(std::uint32_t)>& fieldAt,
                                       Comparer comparer, std::int32_t mode, bool descending) {
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
