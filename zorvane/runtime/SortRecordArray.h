#pragma once
/// \file
/// The one sort of the generated classes: a gap-insertion sort whose every tie is part of the
/// design.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "zorvane/platform/Build.h"
#include "zorvane/runtime/Comparers.h"

namespace zorvane::modZorvane {

/// The order that the sort gives `count` values, as indexes from 0; `fieldAt(i)` is the address of
/// value i. Nothing is moved, so a comparer that raises changes nothing. Fewer than 2 values are
/// not compared. O(n log n) for texts, 32-bit integers and tagged values, O(n log^2 n) where they
/// tie and for every other type.
[[nodiscard]] ZORVANE_EXPORT std::vector<std::uint32_t> SortedOrder(
    std::size_t count, const std::function<const void*(std::uint32_t)>& fieldAt, Comparer comparer,
    std::int32_t mode, bool descending);

/// Sorts `count` records of `recordSize` bytes at `records` by the field at `offset` in each.
/// Records move as raw bytes, once: nothing inside them is copied or released.
ZORVANE_EXPORT void SortRecordArray(void* records, std::int32_t count, std::size_t recordSize,
                                    Comparer comparer, std::size_t offset, std::int32_t mode,
                                    bool descending);

}  // namespace zorvane::modZorvane
