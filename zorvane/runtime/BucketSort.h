#pragma once
// BucketSort: a sort that 64-bit integers tell most of.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace zorvane {

// Sorts by a 64-bit key that `less` begins with: one pass into buckets by the leading bits in which
// the keys differ at all, then each bucket by itself: sort(first, last, less).
template <class Element, class KeyOf, class Less, class Sort>
void SortByBuckets(std::vector<Element>& elements, KeyOf&& keyOf, Less&& less, Sort&& sort) {
    if (elements.empty()) return;
    constexpr std::size_t kWorthwhile = 256;
    const auto [low, high] = std::ranges::minmax_element(elements, {}, keyOf);
    const auto least = keyOf(*low);
    const auto varying = static_cast<int>(std::bit_width(keyOf(*high) - least));
    if (elements.size() < kWorthwhile || varying == 0) {
        sort(elements.begin(), elements.end(), less);
        return;
    }
    const int bits = std::min(varying, elements.size() > 200000 ? 16 : 12);
    const auto bucketOf = [&, base = least](const Element& element) {
        return static_cast<std::size_t>((keyOf(element) - base) >> (varying - bits));
    };
    std::vector<std::uint32_t> ends((std::size_t{1} << bits) + 1);
    for (const Element& element : elements) ++ends[bucketOf(element) + 1];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<Element> scattered(elements.size());
    for (const Element& element : elements) scattered[ends[bucketOf(element)]++] = element;
    // Each bucket now ends where the next began.
    auto begin = scattered.begin();
    for (const std::uint32_t place : ends) {
        const auto end = scattered.begin() + static_cast<std::ptrdiff_t>(place);
        if (end - begin > 1) sort(begin, end, less);
        begin = end;
    }
    elements = std::move(scattered);
}

}  // namespace zorvane
