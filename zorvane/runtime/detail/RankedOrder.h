#pragma once
// RankedOrder: the order of the record sort, found on integers.
//
// Every value gets a rank: equal values the same one. Where no two are equal, any sort gives the
// one order there is; where some are, the gap sort runs on (rank, index) pairs, since it alone
// tells how ties fall.

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "zorvane/platform/CaseMapping.h"

namespace zorvane::modZorvane {

// The order of the values, as indexes from 0. O(n log n), and O(n log^2 n) in integers where values
// tie.
[[nodiscard]] std::vector<std::uint32_t> RankedOrder(std::span<const std::int32_t> values,
                                                     bool descending);
[[nodiscard]] std::vector<std::uint32_t> RankedOrder(std::span<const std::uint64_t> values,
                                                     bool descending);
[[nodiscard]] std::vector<std::uint32_t> RankedOrder(std::span<const std::u16string_view> texts,
                                                     CompareMode mode, bool descending);

}  // namespace zorvane::modZorvane
