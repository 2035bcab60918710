#pragma once
// The one sort of the generated classes: a gap-insertion sort whose every tie is part of the
// design.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "runtime/Comparers.h"

namespace zorvane::modZorvane {

// Gaps 1, 4, 13, 40, ... from the first above the count, each divided by three before its pass.
// An element goes before the one a gap ahead of it while that one is out of place: greater when
// ascending, and smaller or equal when descending.
// Kept: descending moves equal elements past each other, so neither direction is a stable sort.
template <class Element, class Compare>
void GapSort(std::vector<Element>& elements, bool descending, Compare&& compare) {
    const std::size_t count = elements.size();
    if (count < 2) return;
    const auto outOfPlace = [&](const Element& ahead, const Element& element) {
        return (compare(ahead, element) > 0) != descending;
    };
    std::size_t gap = 0;
    while (gap <= count) gap = 3 * gap + 1;
    do {
        gap /= 3;
        for (std::size_t i = gap; i < count; ++i) {
            if (!outOfPlace(elements[i - gap], elements[i])) continue;
            const Element taken = elements[i];
            std::size_t j = i;
            do {
                elements[j] = elements[j - gap];
                j -= gap;
            } while (j >= gap && outOfPlace(elements[j - gap], taken));
            elements[j] = taken;
        }
    } while (gap > 1);
}

// The order that the sort gives `count` values, as indexes from 0; `fieldAt(i)` is the address of
// value i. Nothing is moved, so a comparer that raises changes nothing. Fewer than 2 values are not
// compared. O(n^1.3) comparisons.
[[nodiscard]] std::vector<std::uint32_t> SortedOrder(
    std::size_t count, const std::function<const void*(std::uint32_t)>& fieldAt, Comparer comparer,
    std::int32_t mode, bool descending);

// Sorts `count` records of `recordSize` bytes at `records` by the field at `offset` in each.
// Records move as raw bytes, once: nothing inside them is copied or released.
void SortRecordArray(void* records, std::int32_t count, std::size_t recordSize, Comparer comparer,
                     std::size_t offset, std::int32_t mode, bool descending);

}  // namespace zorvane::modZorvane
