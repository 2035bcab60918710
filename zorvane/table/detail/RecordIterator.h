#pragma once
// RecordIterator: the records of a store, in its own order or in another, with random access.
//
// It reads from where the records, or at least their numbers, lie side by side, and looks for the
// next such place only at the end of one.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "zorvane/runtime/RecordOrder.h"
#include "zorvane/runtime/RecordStore.h"

namespace zorvane::detail {

template <class Record>
class RecordIterator {
  public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = Record;
    using difference_type = std::ptrdiff_t;
    using pointer = const Record*;
    using reference = const Record&;

    RecordIterator() = default;
    // At a position from 0, in the order, or without one in the store's own; that of the end too.
    RecordIterator(const RecordStore<Record>& records, const RecordOrder* order,
                   std::uint32_t position) noexcept
        : RecordIterator(From(&records, order, position)) {}

    reference operator*() const noexcept { return *at_; }
    pointer operator->() const noexcept { return at_; }
    reference operator[](difference_type distance) const noexcept { return *(*this + distance); }
    RecordIterator& operator++() noexcept {
        if (++at_ == last_) [[unlikely]]
            Next();
        return *this;
    }
    RecordIterator operator++(int) noexcept {
        RecordIterator before(*this);
        ++*this;
        return before;
    }
    RecordIterator& operator--() noexcept { return *this -= 1; }
    RecordIterator operator--(int) noexcept {
        RecordIterator before(*this);
        --*this;
        return before;
    }
    RecordIterator& operator+=(difference_type distance) noexcept {
        return *this = From(records_, order_, static_cast<std::uint32_t>(Position() + distance));
    }
    RecordIterator& operator-=(difference_type distance) noexcept { return *this += -distance; }
    friend RecordIterator operator+(RecordIterator from, difference_type distance) noexcept {
        return from += distance;
    }
    friend RecordIterator operator+(difference_type distance, RecordIterator from) noexcept {
        return from += distance;
    }
    friend RecordIterator operator-(RecordIterator from, difference_type distance) noexcept {
        return from -= distance;
    }
    friend difference_type operator-(const RecordIterator& left,
                                     const RecordIterator& right) noexcept {
        return left.Position() - right.Position();
    }
    friend bool operator==(const RecordIterator& left, const RecordIterator& right) noexcept {
        return left.at_ == right.at_;
    }
    friend auto operator<=>(const RecordIterator& left, const RecordIterator& right) noexcept {
        return left.Position() <=> right.Position();
    }

    [[nodiscard]] difference_type Position() const noexcept { return past_ - (last_ - at_); }

  private:
    [[gnu::noinline]] static RecordIterator From(const RecordStore<Record>* records,
                                                 const RecordOrder* order,
                                                 std::uint32_t position) noexcept {
        RecordIterator from;
        from.records_ = records;
        from.order_ = order;
        from.past_ = static_cast<difference_type>(position);
        if (!records) return from;
        const auto count = order ? order->Count() : static_cast<std::uint32_t>(records->Count());
        if (position >= count) return from;
        if (!order) {
            const auto side = records->RecordsFrom(static_cast<std::int32_t>(position) + 1);
            if (!side.empty()) {
                from.at_ = side.data();
                from.last_ = from.at_ + side.size();
                from.past_ += static_cast<difference_type>(side.size());
                return from;
            }
        }
        const auto numbers = order ? order->From(position)
                                   : records->NumbersFrom(static_cast<std::int32_t>(position) + 1);
        from.number_ = numbers.data();
        from.lastNumber_ = from.number_ + numbers.size();
        from.Show();
        return from;
    }
    // The record of the number that is read, alone.
    void Show() noexcept {
        at_ = &records_->OfNumber(*number_);
        last_ = at_ + 1;
        ++past_;
    }
    void Next() noexcept {
        if (number_ && ++number_ != lastNumber_) {
            Show();
        } else {
            // Assigned as a whole: a call that knew this iterator would keep it out of registers.
            *this = From(records_, order_, static_cast<std::uint32_t>(past_));
        }
    }

    const Record* at_ = nullptr;    // null: behind the last
    const Record* last_ = nullptr;  // where the records side by side end
    difference_type past_ = 0;      // its position
    const RecordStore<Record>* records_ = nullptr;
    const RecordOrder* order_ = nullptr;
    // Where only numbers lie side by side: the record's, and where they end.
    const RecordNumber* number_ = nullptr;
    const RecordNumber* lastNumber_ = nullptr;
};

}  // namespace zorvane::detail
