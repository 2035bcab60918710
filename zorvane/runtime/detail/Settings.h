#pragma once
// Settings: the six settings that every generated class has, in the order of their column numbers.

#include <cstdint>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

struct ZORVANE_EXPORT Settings {
    bool Changed = false;
    std::int32_t Compare = 0;  // 0 binary, anything else text
    bool Descending = false;
    std::int32_t Granularity = 0;
    bool Sorted = true;
    bool Unique = true;

    // Setting 1..6 as CopyItemValue gives it; Empty for any other number.
    [[nodiscard]] Variant At(std::int32_t column) const;
    // Takes all six from a source's CopyItemValue(0, 1..6), as they come. Raises what the source or
    // a conversion raises; then nothing changed.
    void ReadFrom(Object& source);
};

// The cell of a source of CopyFrom: its late-bound CopyItemValue(index, column).
[[nodiscard]] ZORVANE_EXPORT Variant SourceCell(Object& source, std::int32_t index,
                                                std::int32_t column);
// The late-bound Count of a source of CopyFrom; below 0 counts as 0.
[[nodiscard]] ZORVANE_EXPORT std::int32_t SourceCount(Object& source);

}  // namespace zorvane
