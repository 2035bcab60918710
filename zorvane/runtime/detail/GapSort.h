#pragma once
// GapSort: the gap-insertion sort of the generated classes, whose every tie is part of the design.

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zorvane::modZorvane {

// How many moves an element may need on average before a pass is finished another way; elements in
// no special order need fewer than ten.
inline constexpr std::size_t kPatience = 32;

// Ends a pass whose first `done` elements went through it. Its insertions amount to a stable sort
// of each chain, or descending to one of which equal elements come out backwards; so where equal
// elements make insertion quadratic, a merge sort gives the very same. O(n log n).
template <class Element, class Compare>
void FinishPass(Element* elements, std::size_t count, std::size_t gap, std::size_t done,
                bool descending, Compare&& compare) {
    std::vector<Element> chain;
    for (std::size_t first = 0; first < gap; ++first) {
        chain.clear();
        std::size_t sorted = 0;
        for (std::size_t i = first; i < count; i += gap) {
            sorted += i < done ? 1 : 0;
            chain.push_back(elements[i]);
        }
        if (descending) {
            // The later before the earlier, and before those that already are in order.
            std::rotate(chain.begin(), chain.begin() + static_cast<std::ptrdiff_t>(sorted),
                        chain.end());
            std::reverse(chain.begin(), chain.end() - static_cast<std::ptrdiff_t>(sorted));
        }
        std::stable_sort(chain.begin(), chain.end(), [&](const Element& a, const Element& b) {
            return descending ? compare(a, b) > 0 : compare(a, b) < 0;
        });
        for (std::size_t i = 0; i < chain.size(); ++i) elements[first + i * gap] = chain[i];
    }
}

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
        std::size_t moves = 0;
        for (std::size_t i = gap; i < count; ++i) {
            if (moves > kPatience * count) {
                FinishPass(elements.data(), count, gap, i, descending, compare);
                break;
            }
            if (!outOfPlace(elements[i - gap], elements[i])) continue;
            const Element taken = elements[i];
            std::size_t j = i;
            do {
                elements[j] = elements[j - gap];
                j -= gap;
                ++moves;
            } while (j >= gap && outOfPlace(elements[j - gap], taken));
            elements[j] = taken;
        }
    } while (gap > 1);
}

}  // namespace zorvane::modZorvane
