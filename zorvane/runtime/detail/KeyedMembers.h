#pragma once
// KeyedMembers: what the generated keyed classes answer by name, for callers that know no class.

#include <span>

#include "zorvane/platform/LateBound.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

template <class D>
[[nodiscard]] std::span<const LateMember<D>> KeyedMembers() noexcept {
    using A = Arguments;
    static constexpr LateMember<D> kMembers[] = {
        {u"Changed", 0, [](D& d, A) -> Variant { return d.Changed(); }},
        {u"ClassName", 0, [](D& d, A) -> Variant { return d.ClassName(); }},
        {u"Clear", 0, [](D& d, A) -> Variant { return d.Clear(), Variant(); }},
        {u"Compare", 0, [](D& d, A) -> Variant { return d.Compare(); }},
        {u"CopyItemValue", 2,
         [](D& d, A a) -> Variant { return d.CopyItemValue(a[0].ToLong(), a[1].ToLong()); }},
        {u"Count", 0, [](D& d, A) -> Variant { return d.Count(); }},
        {u"Descending", 0, [](D& d, A) -> Variant { return d.Descending(); }},
        {u"Exists", 1, [](D& d, A a) -> Variant { return d.Contains(a[0]); }},
        {u"Granularity", 0, [](D& d, A) -> Variant { return d.Granularity(); }},
        {u"Item", 1, [](D& d, A a) -> Variant { return d.Item(a[0]); }},
        {u"ItemLong", 1, [](D& d, A a) -> Variant { return d.ItemLong(a[0]); }},
        {u"ItemString", 1, [](D& d, A a) -> Variant { return d.ItemString(a[0]); }},
        {u"Key", 1, [](D& d, A a) -> Variant { return d.Key(a[0].ToLong()); }},
        {u"Remove", 1,
         [](D& d, A a) -> Variant { return d.Remove(a[0], a.size() > 1 && a[1].ToBoolean()); }},
        {u"Sort", 0, [](D& d, A) -> Variant { return d.Sort(); }},
        {u"SortBy", 1,
         [](D& d, A a) -> Variant {
             return d.SortBy(a[0].ToText(), a.size() > 1 && a[1].ToBoolean());
         }},
        {u"Sorted", 0, [](D& d, A) -> Variant { return d.Sorted(); }},
        {u"Unique", 0, [](D& d, A) -> Variant { return d.Unique(); }},
    };
    return kMembers;
}

}  // namespace zorvane
