#pragma once
// GapSort: the gap-insertion sort of the generated classes, whose every tie is part of the design.

#include <cstddef>
#include <vector>

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

}  // namespace zorvane::modZorvane
