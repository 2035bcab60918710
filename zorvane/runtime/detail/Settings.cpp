#include "zorvane/runtime/detail/Settings.h"

#include <algorithm>
#include <array>

namespace zorvane {

Variant Settings::At(std::int32_t column) const {
    switch (column) {
        case 1:
            return Changed;
        case 2:
            return Compare;
        case 3:
            return Descending;
        case 4:
            return Granularity;
        case 5:
            return Sorted;
        case 6:
            return Unique;
        default:
            return {};
    }
}

void Settings::ReadFrom(Object& source) {
    Settings read;
    read.Changed = SourceCell(source, 0, 1).ToBoolean();
    read.Compare = SourceCell(source, 0, 2).ToLong();
    read.Descending = SourceCell(source, 0, 3).ToBoolean();
    read.Granularity = SourceCell(source, 0, 4).ToLong();
    read.Sorted = SourceCell(source, 0, 5).ToBoolean();
    read.Unique = SourceCell(source, 0, 6).ToBoolean();
    *this = read;
}

Variant SourceCell(Object& source, std::int32_t index, std::int32_t column) {
    const std::array<Variant, 2> arguments{index, column};
    return source.Call(u"CopyItemValue", arguments);
}

std::int32_t SourceCount(Object& source) {
    return std::max(0, source.Get(u"Count").ToLong());
}

}  // namespace zorvane
