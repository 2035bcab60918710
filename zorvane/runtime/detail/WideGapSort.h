#pragma once
// WideGapSort: the gap sort on integers, four neighbouring chains side by side where the processor
// has vectors of four.

#include <cstdint>
#include <vector>

namespace zorvane::modZorvane {

// A rank in the high 32 bits above the index of the value that has it.
using Ranked = std::uint64_t;

// Orders by rank alone, exactly as GapSort does. O(n log^2 n).
void WideGapSort(std::vector<Ranked>& elements, bool descending);
// The same without vectors, for any processor.
void PlainGapSort(std::vector<Ranked>& elements, bool descending);

}  // namespace zorvane::modZorvane
