#pragma once
/// \class zorvane::TableOrder
/// The records of a table in an order that it keeps.
///
/// A light handle, a sized range with random access. The order follows every change of the table,
/// until it is dropped (Table::drop, and Table::update where it says so) or the table ends; then
/// the handle is false and empty. Iterators are valid until the table changes or is moved.
/// Positions count from 0.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <ranges>
#include <utility>

#include "zorvane/runtime/RecordIterator.h"
#include "zorvane/table/detail/ColumnOrder.h"
#include "zorvane/table/detail/Raise.h"

namespace zorvane {

template <class Table, class... Columns>
class TableOrder {
  public:
    using value_type = typename Table::value_type;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using iterator = RecordIterator<value_type, WholeRecord>;
    using const_iterator = iterator;
    using range = RecordRange<value_type, WholeRecord>;

    TableOrder() = default;  ///< of no table

    /// Whether the order is kept still.
    [[nodiscard]] explicit operator bool() const noexcept { return kept_ && kept_->Owner(); }

    [[nodiscard]] size_type size() const noexcept { return kept_ ? kept_->Numbers().Count() : 0; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] iterator begin() const noexcept { return At(0); }
    [[nodiscard]] iterator end() const noexcept {
        return *this ? iterator::End(*kept_->Records(), &kept_->Numbers()) : iterator();
    }

    /// The record at a position. Throws std::out_of_range. O(log n).
    [[nodiscard]] const value_type& operator[](size_type position) const {
        if (position >= size()) detail::RaiseNoPosition(position, size());
        return kept_->Records()->OfNumber(
            kept_->Numbers().At(static_cast<std::uint32_t>(position)));
    }
    [[nodiscard]] const value_type& front() const { return (*this)[0]; }
    [[nodiscard]] const value_type& back() const { return (*this)[size() - 1]; }

    /// The position of the record with a key. O(log n).
    template <class Key = typename Table::key_type>
    [[nodiscard]] std::optional<size_type> rank_of(const Key& key) const {
        if (!*this) return std::nullopt;
        const RecordNumber* const number = kept_->Owner()->Locate(key);
        if (!number) return std::nullopt;
        return kept_->Numbers().PositionOf(*number);
    }

    /// The first record that does not stand in front of these values of the first columns, in the
    /// order's own sense; the first that stands behind them; those that have them. O(log n).
    template <class... Values>
    [[nodiscard]] iterator lower_bound(const Values&... values) const {
        return At(Bound(false, values...));
    }
    template <class... Values>
    [[nodiscard]] iterator upper_bound(const Values&... values) const {
        return At(Bound(true, values...));
    }
    template <class... Values>
    [[nodiscard]] range equal_range(const Values&... values) const {
        return {lower_bound(values...), upper_bound(values...)};
    }
    template <class... Values>
    [[nodiscard]] size_type count(const Values&... values) const {
        return Bound(true, values...) - Bound(false, values...);
    }
    /// The first of them, or null.
    template <class... Values>
    [[nodiscard]] const value_type* find(const Values&... values) const {
        const iterator first = lower_bound(values...);
        return first != end() && kept_->Begins(*first, values...) ? &*first : nullptr;
    }
    template <class... Values>
    [[nodiscard]] bool contains(const Values&... values) const {
        return find(values...) != nullptr;
    }

  private:
    friend Table;
    using Kept = detail::ColumnOrder<Table, Columns...>;

    explicit TableOrder(std::shared_ptr<const Kept> kept) noexcept : kept_(std::move(kept)) {}
    template <class... Values>
    [[nodiscard]] std::uint32_t Bound(bool behind, const Values&... values) const {
        return kept_ ? kept_->Bound(behind, values...) : 0;
    }
    [[nodiscard]] iterator At(std::uint32_t position) const noexcept {
        if (!*this) return {};
        return {*kept_->Records(), &kept_->Numbers(), position};
    }

    std::shared_ptr<const Kept> kept_;
};

}  // namespace zorvane

/// \cond
/// Its iterators need the order, which the table keeps, and not the handle.
template <class Table, class... Columns>
inline constexpr bool std::ranges::enable_borrowed_range<zorvane::TableOrder<Table, Columns...>> =
    true;
template <class Table, class... Columns>
inline constexpr bool std::ranges::enable_view<zorvane::TableOrder<Table, Columns...>> = true;
/// \endcond
