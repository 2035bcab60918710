#pragma once
/// \class zorvane::TableHash
/// The hash of a key, the same for all forms of one text.

#include <cstddef>
#include <functional>

#include "zorvane/table/detail/Plain.h"

namespace zorvane {

template <class Key>
struct TableHash {
    /// For a Key, or for what Plain makes of it.
    std::size_t operator()(const detail::PlainOf<Key>& key) const {
        return std::hash<detail::PlainOf<Key>>()(key);
    }
};

}  // namespace zorvane
