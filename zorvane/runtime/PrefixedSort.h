#pragma once
// PrefixedSort: records' numbers in an order that 64-bit prefixes tell most of. Compiled once for
// all orders: a comparison that is asked through a pointer is asked where prefixes tie.

#include <cstdint>
#include <vector>

#include "zorvane/platform/Build.h"
#include "zorvane/runtime/RecordOrder.h"

namespace zorvane {

struct PrefixedNumber {
    std::uint64_t Prefix;
    RecordNumber Number;
};

// Whether one record comes before another whose prefix is the same. Looks at the function that it
// is made of, which has to outlive it.
class TieLess {
  public:
    template <class Less>
    explicit TieLess(const Less& less) noexcept
        : less_(&less), ask_([](const void* asked, RecordNumber left, RecordNumber right) {
              return static_cast<bool>((*static_cast<const Less*>(asked))(left, right));
          }) {}
    [[nodiscard]] bool operator()(const PrefixedNumber& left, const PrefixedNumber& right) const {
        if (left.Prefix != right.Prefix) return left.Prefix < right.Prefix;
        return ask_(less_, left.Number, right.Number);
    }

  private:
    const void* less_;
    bool (*ask_)(const void* less, RecordNumber left, RecordNumber right);
};

// Stable, and within its bounds whatever a comparison of the user's says. O(n log n), and O(n)
// where prefixes differ much. Throws what the comparison throws; then the elements are as they
// were, in any order.
ZORVANE_EXPORT void SortPrefixed(std::vector<PrefixedNumber>& elements, const TieLess& less);

}  // namespace zorvane
