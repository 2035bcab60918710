#pragma once
/// \class zorvane::Enumerator
/// One pass over the items that a container held when the pass began.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "zorvane/platform/Variant.h"

namespace zorvane {

/// What an enumeration goes through; shared by the container and its enumerators.
using ItemSnapshot = std::shared_ptr<const std::vector<Variant>>;

/// Keeps its snapshot alive: later changes of the container, and its end, do not touch it.
class Enumerator {
  public:
    explicit Enumerator(ItemSnapshot items) noexcept : items_(std::move(items)) {}

    /// The next item, or false when there is none (then `item` stays as it is).
    bool Next(Variant& item) {
        if (next_ == items_->size()) return false;
        item = (*items_)[next_++];
        return true;
    }

    [[nodiscard]] auto begin() const noexcept { return items_->begin(); }
    [[nodiscard]] auto end() const noexcept { return items_->end(); }

  private:
    ItemSnapshot items_;
    std::size_t next_ = 0;
};

}  // namespace zorvane
