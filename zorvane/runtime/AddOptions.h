#pragma once
/// \file
/// What Add of the keyed classes takes beyond item and key, and where it leads.

#include <cstdint>
#include <optional>

#include "zorvane/platform/EntryName.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/runtime/ErrorTable.h"

namespace zorvane {

/// A position in a whole number of any type but a byte's; one that 32 bits do not hold is that of
/// no entry.
class AddPosition {
  public:
    constexpr AddPosition() = default;
    constexpr AddPosition(WholePosition auto position) noexcept : position_(AsPosition(position)) {}
    constexpr operator std::int32_t() const noexcept { return position_; }

  private:
    std::int32_t position_ = 0;
};

struct AddOptions {
    std::optional<Variant> Before = {};  ///< the new entry goes before this key or position ...
    std::optional<Variant> After = {};   ///< ... or behind this one; Before takes precedence
    AddPosition Position = {};           ///< ... or here, where the class uses it; 0 = not given
    bool ReturnItem = false;  ///< give back the item and raise failures, instead of codes

    [[nodiscard]] bool NamesPlace() const noexcept { return Before || After; }
};

/// A position 1..count+1, or what is wrong with the Before or After that was given.
struct Place {
    std::int32_t Position = 0;
    std::optional<Failure> Wrong;
};

/// Where Before or After, one of which is given, lead in a list of `count` entries.
/// `find(const Text& key)` gives an std::optional position.
template <class Find>
[[nodiscard]] Place PlaceBeforeOrAfter(const AddOptions& options, std::int32_t count, Find&& find) {
    const KeyOrPosition named = Classify(options.Before ? *options.Before : *options.After);
    std::int64_t position = named.Position;  ///< wide: After may be the greatest position there is
    if (named.Is == KeyOrPosition::Kind::Neither) return Place{0, Failure::BadPosition};
    if (named.Is == KeyOrPosition::Kind::Key) {
        const std::optional<std::int32_t> found = find(*named.Key);
        if (!found) return Place{0, Failure::BadPosition};
        position = *found;
    }
    if (!options.Before) ++position;
    if (position < 1 || position > std::int64_t{count} + 1) return Place{0, Failure::Unknown};
    return Place{static_cast<std::int32_t>(position), std::nullopt};
}

}  // namespace zorvane
