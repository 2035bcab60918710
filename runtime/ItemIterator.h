#pragma once
// ItemIterator: the items of a record store in position order, for range-for.
//
// Any insertion, removal or sort ends the pass: iterators of before it are not to be used.

#include <cstddef>
#include <cstdint>

#include "platform/Variant.h"
#include "runtime/RecordStore.h"

namespace zorvane {

template <class Record>
class ItemIterator {
  public:
    using value_type = Variant;
    using difference_type = std::ptrdiff_t;

    ItemIterator() = default;  // the end of any pass
    explicit ItemIterator(const RecordStore<Record>& records) noexcept : records_(&records) {
        Walk(1);
    }

    const Variant& operator*() const noexcept { return at_->Item; }
    const Variant* operator->() const noexcept { return &**this; }
    ItemIterator& operator++() noexcept {
        if (++at_ == last_) Walk(next_);
        return *this;
    }
    ItemIterator operator++(int) noexcept {
        ItemIterator before(*this);
        ++*this;
        return before;
    }
    friend bool operator==(const ItemIterator& left, const ItemIterator& right) noexcept {
        return left.at_ == right.at_;
    }

  private:
    // Stands at a position, with all that lies side by side from there ahead.
    void Walk(std::int32_t position) noexcept {
        at_ = records_->Find(position);
        if (!at_) return;
        const std::int32_t stretch = records_->StretchFrom(position);
        last_ = at_ + stretch;
        next_ = position + stretch;
    }

    const RecordStore<Record>* records_ = nullptr;
    const Record* at_ = nullptr;    // null: behind the last
    const Record* last_ = nullptr;  // where the stretch ends
    std::int32_t next_ = 0;         // the position that stands there
};

}  // namespace zorvane
