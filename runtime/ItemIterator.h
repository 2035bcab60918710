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
        if (++at_ != last_) return *this;
        if (number_ != lastNumber_ && ++number_ != lastNumber_) {
            StandAtNumber();
        } else {
            Walk(next_);
        }
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
        at_ = nullptr;
        if (position > records_->Count()) return;
        if (const auto records = records_->RecordsFrom(position); !records.empty()) {
            at_ = records.data();
            last_ = at_ + records.size();
            next_ = position + static_cast<std::int32_t>(records.size());
            return;
        }
        const auto numbers = records_->NumbersFrom(position);
        number_ = numbers.data();
        lastNumber_ = number_ + numbers.size();
        next_ = position + static_cast<std::int32_t>(numbers.size());
        StandAtNumber();
    }
    void StandAtNumber() noexcept {
        at_ = &records_->OfNumber(*number_);
        last_ = at_ + 1;
    }

    const RecordStore<Record>* records_ = nullptr;
    const Record* at_ = nullptr;    // null: behind the last
    const Record* last_ = nullptr;  // where the records side by side end
    // Where these are one record: its number, and where the numbers side by side end.
    const RecordNumber* number_ = nullptr;
    const RecordNumber* lastNumber_ = nullptr;
    std::int32_t next_ = 0;  // the position behind all of them
};

}  // namespace zorvane
