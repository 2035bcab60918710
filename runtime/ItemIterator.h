#pragma once
// ItemIterator: the items of a record store in position order, for range-for.
//
// It counts positions: an insertion or removal shifts what it shows, and a reference that it gave
// is valid until a record is inserted or the order replaced.

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

    ItemIterator() = default;
    ItemIterator(const RecordStore<Record>* records, std::int32_t position) noexcept
        : records_(records), position_(position) {}

    const Variant& operator*() const noexcept { return records_->At(position_).Item; }
    const Variant* operator->() const noexcept { return &**this; }
    ItemIterator& operator++() noexcept {
        ++position_;
        return *this;
    }
    ItemIterator operator++(int) noexcept { return {records_, position_++}; }
    friend bool operator==(const ItemIterator&, const ItemIterator&) = default;

  private:
    const RecordStore<Record>* records_ = nullptr;
    std::int32_t position_ = 0;
};

}  // namespace zorvane
