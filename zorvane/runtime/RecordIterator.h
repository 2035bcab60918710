#pragma once
/// \class zorvane::RecordIterator
/// The records of a store, in its own order or in another, with random access; what each shows of
/// its record is the view's.
///
/// Any change of the container ends the pass: iterators of before it are not to be used. A step
/// forward is O(1): it reads from where the records, or at least their numbers, lie side by side. A
/// step to any other place costs what a look-up by position does.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <ranges>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Variant.h"
#include "zorvane/runtime/RecordOrder.h"
#include "zorvane/runtime/RecordStore.h"

namespace zorvane {

/// \cond
// What an iterator shows of a record: all of it, or the item alone.
struct WholeRecord {
    template <class Record>
    static const Record& Of(const Record& record) noexcept {
        return record;
    }
};
struct ItemOfRecord {
    template <class Record>
    static const Variant& Of(const Record& record) noexcept {
        return record.Item;
    }
};
/// \endcond

template <class Record, class View>
class RecordIterator {
  public:
    using reference = decltype(View::Of(std::declval<const Record&>()));
    using value_type = std::remove_cvref_t<reference>;
    using difference_type = std::ptrdiff_t;
    using pointer = std::add_pointer_t<reference>;
    using iterator_concept = std::random_access_iterator_tag;
    /// Algorithms of before C++20 want something to point at.
    using iterator_category = std::conditional_t<std::is_reference_v<reference>, iterator_concept,
                                                 std::input_iterator_tag>;

    RecordIterator() = default;
    /// At a position from 0, in the order, or without one in the store's own; that of the end too.
    RecordIterator(const RecordStore<Record>& records, const RecordOrder* order,
                   std::uint32_t position) noexcept
        : RecordIterator(From(&records, order, position)) {}
    /// Behind the last of all: a pass that compares with it sees that nothing is there.
    [[nodiscard]] static RecordIterator End(const RecordStore<Record>& records,
                                            const RecordOrder* order = nullptr) noexcept {
        RecordIterator end;
        end.records_ = &records;
        end.order_ = order;
        end.past_ = order ? order->Count() : static_cast<std::uint32_t>(records.Count());
        return end;
    }

    reference operator*() const { return View::Of(*at_); }
    pointer operator->() const noexcept requires std::is_reference_v<reference> {
        return std::addressof(**this);
    }
    reference operator[](difference_type distance) const { return *(*this + distance); }
    RecordIterator& operator++() noexcept {
        if (number_) {
            if (++number_ != lastNumber_) [[likely]] {
                at_ = &records_->OfNumber(*number_);
                return *this;
            }
        } else if (++at_ != last_) [[likely]] {
            return *this;
        }
        // Assigned as a whole: a call that knew this iterator would keep it out of registers.
        return *this = From(records_, order_, past_);
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

    /// Where it stands, from 0.
    [[nodiscard]] difference_type Position() const noexcept {
        return static_cast<difference_type>(past_) -
               (number_ ? lastNumber_ - number_ : last_ - at_);
    }

  private:
    [[gnu::noinline]] static RecordIterator From(const RecordStore<Record>* records,
                                                 const RecordOrder* order,
                                                 std::uint32_t position) noexcept {
        RecordIterator from;
        from.records_ = records;
        from.order_ = order;
        from.past_ = position;
        if (!records) return from;
        const auto count = order ? order->Count() : static_cast<std::uint32_t>(records->Count());
        if (position >= count) return from;
        if (!order) {
            const auto side = records->RecordsFrom(static_cast<std::int32_t>(position) + 1);
            if (!side.empty()) {
                from.at_ = side.data();
                from.last_ = from.at_ + side.size();
                from.past_ += static_cast<std::uint32_t>(side.size());
                return from;
            }
        }
        const auto numbers = order ? order->From(position)
                                   : records->NumbersFrom(static_cast<std::int32_t>(position) + 1);
        from.number_ = numbers.data();
        from.lastNumber_ = from.number_ + numbers.size();
        from.past_ += static_cast<std::uint32_t>(numbers.size());
        from.at_ = &records->OfNumber(*from.number_);
        return from;
    }

    const RecordStore<Record>* records_ = nullptr;
    const RecordOrder* order_ = nullptr;
    const Record* at_ = nullptr;    // null: behind the last
    const Record* last_ = nullptr;  // where the records side by side end
    // Where only numbers lie side by side: the record's, and where they end.
    const RecordNumber* number_ = nullptr;
    const RecordNumber* lastNumber_ = nullptr;
    std::uint32_t past_ = 0;  // the position behind all of them
};

/// Records side by side in an order, mostly all of a store in its own: a view, sized and with
/// random access.
template <class Record, class View>
class RecordRange {
  public:
    using iterator = RecordIterator<Record, View>;

    RecordRange() = default;  ///< of nothing
    explicit RecordRange(const RecordStore<Record>& records) noexcept
        : first_(records, nullptr, 0), last_(iterator::End(records)) {}
    RecordRange(iterator first, iterator last) noexcept : first_(first), last_(last) {}

    [[nodiscard]] iterator begin() const noexcept { return first_; }
    [[nodiscard]] iterator end() const noexcept { return last_; }
    [[nodiscard]] std::size_t size() const noexcept {
        return static_cast<std::size_t>(last_ - first_);
    }
    [[nodiscard]] bool empty() const noexcept { return first_ == last_; }
    /// At a position from 0 that is there.
    [[nodiscard]] typename iterator::reference operator[](std::size_t position) const {
        return first_[static_cast<std::ptrdiff_t>(position)];
    }
    /// @{
    /// Of a range that is not empty.
    [[nodiscard]] typename iterator::reference front() const { return *first_; }
    [[nodiscard]] typename iterator::reference back() const { return (*this)[size() - 1]; }
    /// @}

  private:
    iterator first_, last_;
};

}  // namespace zorvane

/// \cond
/// Its iterators need the store and not the range.
template <class Record, class View>
inline constexpr bool std::ranges::enable_borrowed_range<zorvane::RecordRange<Record, View>> = true;
template <class Record, class View>
inline constexpr bool std::ranges::enable_view<zorvane::RecordRange<Record, View>> = true;
/// \endcond
