#include "zorvane/runtime/PrefixedSort.h"

#include <algorithm>

#include "zorvane/runtime/BucketSort.h"

namespace zorvane {

void SortPrefixed(std::vector<PrefixedNumber>& elements, const TieLess& less) {
    SortByBuckets(
        elements, [](const PrefixedNumber& element) { return element.Prefix; }, less,
        [](auto first, auto last, const TieLess& before) {
            std::stable_sort(first, last, before);
        });
}

}  // namespace zorvane
