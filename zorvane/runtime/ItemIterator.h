#pragma once
/// \class zorvane::ItemIterator
/// The items of a record store in position order, for range-for.
///
/// Any insertion, removal or sort ends the pass: iterators of before it are not to be used.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstddef>
#include <cstdint>

#include "zorvane/platform/Variant.h"
#include "zorvane/runtime/RecordStore.h"

namespace zorvane {

template <class Record>
class ItemIterator {
  public:
    using value_type = Variant;
    using difference_type = std::ptrdiff_t;

    ItemIterator() = default;  ///< the end of any pass
    explicit ItemIterator(const RecordStore<Record>& records) noexcept
        : ItemIterator(From(records, 1)) {}

    const Variant& operator*() const noexcept { return at_->Item; }
    const Variant* operator->() const noexcept { return &**this; }
    ItemIterator& operator++() noexcept {
        if (number_) {
            if (++number_ != lastNumber_) [[likely]] {
                at_ = &records_->OfNumber(*number_);
                return *this;
            }
        } else if (++at_ != last_) [[likely]] {
            return *this;
        }
        // Assigned as a whole: a call that knew this iterator would keep it out of registers.
        return *this = From(*records_, next_);
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
    // One that stands at a position, with all that lies side by side from there ahead.
    [[gnu::noinline]] static ItemIterator From(const RecordStore<Record>& store,
                                               std::int32_t position) noexcept {
        ItemIterator from;
        if (position > store.Count()) return from;
        from.records_ = &store;
        const auto records = store.RecordsFrom(position);
        if (!records.empty()) {
            from.at_ = records.data();
            from.last_ = from.at_ + records.size();
            from.next_ = position + static_cast<std::int32_t>(records.size());
            return from;
        }
        const auto numbers = store.NumbersFrom(position);
        from.number_ = numbers.data();
        from.lastNumber_ = from.number_ + numbers.size();
        from.next_ = position + static_cast<std::int32_t>(numbers.size());
        from.at_ = &store.OfNumber(*from.number_);
        return from;
    }

    const RecordStore<Record>* records_ = nullptr;
    const Record* at_ = nullptr;    // null: behind the last
    const Record* last_ = nullptr;  // where the records side by side end
    // Where only numbers lie side by side: the record's, and where they end.
    const RecordNumber* number_ = nullptr;
    const RecordNumber* lastNumber_ = nullptr;
    std::int32_t next_ = 0;  // the position behind all of them
};

}  // namespace zorvane
