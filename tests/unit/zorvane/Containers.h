#pragma once
// What the containers have in common, for tests that hold for each of them.

#include "tests/support/Testing.h"
#include "zorvane/collection/CollectionEx.h"
#include "zorvane/collection/ZVCollectionEx.h"
#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Collection.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace zorvane {

using Containers =
    testing::Types<Collection, CollectionEx, KeyListEX, ZVCollectionEx, ZVPropertyBag>;

template <class C>
inline constexpr bool kPlain = std::is_same_v<C, Collection>;
template <class C>
inline constexpr bool kBag = std::is_same_v<C, ZVPropertyBag>;

inline Text KeyOf(int number) {
    return Text("key") + std::to_string(number);
}

template <class C>
void AddTo(C& container, const Variant& item, const Text& key) {
    if constexpr (kPlain<C>) {
        container.Add(item, {.Key = key});
    } else {
        container.Add(item, key);
    }
}

}  // namespace zorvane
