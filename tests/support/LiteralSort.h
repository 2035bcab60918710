#pragma once
// The record sort told step by step on records that really move, as the oracle of every fast one.

#include <cstddef>
#include <vector>

namespace zorvane {

template <class Record, class Compare>
void LiteralSort(std::vector<Record>& records, bool descending, Compare&& compare) {
    const std::size_t n = records.size();
    if (n < 2) return;
    const auto at = [&](std::size_t i) -> Record& { return records[i - 1]; };
    std::size_t h = 0;
    do {
        h = 3 * h + 1;
    } while (h <= n);
    do {
        h /= 3;
        for (std::size_t i = h + 1; i <= n; ++i) {
            if ((compare(at(i - h), at(i)) > 0) == descending) continue;
            const Record buffer = at(i);
            std::size_t j = i;
            do {
                at(j) = at(j - h);
                j -= h;
                if (j <= h) break;
            } while ((compare(at(j - h), buffer) > 0) != descending);
            at(j) = buffer;
        }
    } while (h != 1);
}

}  // namespace zorvane
