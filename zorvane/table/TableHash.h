#pragma once
/// \class zorvane::TableHash
/// The hash of a key, the same for all forms of one text, and another in every process: nobody can
/// choose texts or numbers that share one. A type of the user's own is hashed by std::hash, and is
/// as safe from that as its hash.

#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>
#include <type_traits>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Secret.h"
#include "zorvane/table/detail/Plain.h"

namespace zorvane {

template <class Key>
class TableHash {
  public:
    /// For a Key, or for what Plain makes of it.
    [[nodiscard]] std::size_t operator()(const detail::PlainOf<Key>& key) const {
        using Plain = detail::PlainOf<Key>;
        if constexpr (std::is_same_v<Plain, std::string_view>) {
            return HashBytes(key);
        } else if constexpr (std::is_same_v<Plain, std::u16string_view>) {
            return HashExactly(key, Sameness::Units);
        } else {
            // The high bits of a product depend on all of the number.
            constexpr int kDropped = 64 - std::numeric_limits<std::size_t>::digits;
            return static_cast<std::size_t>(secret_.Of(std::hash<Plain>()(key)) >> kDropped);
        }
    }

  private:
    HashSecret secret_ = TheHashSecret();
};

}  // namespace zorvane
