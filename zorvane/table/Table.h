#pragma once
/// \class zorvane::Table
/// Records of any type under a unique key, in the order in which they came and in as many
/// other orders as are asked for. docs/table.md tells of it as a whole.
///
/// Between public calls: the index names every record under its key's hash; every kept order holds
/// every record's number once, in order. A member that throws has changed nothing, unless it says
/// otherwise. Const members may be called by several threads at once. A pointer to a record is
/// valid until a record is added (unless there is room for it: reserve) or that record is taken
/// away or replaced; an iterator until the table changes or is moved. Positions count from 0.

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <ranges>
#include <type_traits>
#include <utility>
#include <vector>

#include "zorvane/runtime/DoomedRecords.h"
#include "zorvane/runtime/KeyIndex.h"
#include "zorvane/runtime/RecordIterator.h"
#include "zorvane/runtime/RecordStore.h"
#include "zorvane/table/Columns.h"
#include "zorvane/table/TableHash.h"
#include "zorvane/table/TableOrder.h"
#include "zorvane/table/detail/TableKeys.h"

namespace zorvane {

/// kKey: what std::invoke gets a record's key by. Hash, Equal: as of an unordered container.
template <class Record, auto kKey,
          class Hash =
              TableHash<std::remove_cvref_t<std::invoke_result_t<decltype(kKey), const Record&>>>,
          class Equal = std::equal_to<>>
class Table {
    static_assert(std::is_object_v<Record> && std::is_nothrow_move_constructible_v<Record>,
                  "records are moved, and that shall not fail");
    static_assert(alignof(Record) <= alignof(std::max_align_t), "records of ordinary alignment");
    using Keys = detail::TableKeys<Record, kKey, Hash, Equal>;

  public:
    using key_type = typename Keys::Key;
    using value_type = Record;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using hasher = Hash;
    using key_equal = Equal;
    using reference = const Record&;
    using const_reference = const Record&;
    using iterator = RecordIterator<Record, WholeRecord>;
    using const_iterator = iterator;
    template <class... Columns>
    using Order = TableOrder<Table, std::remove_cv_t<Columns>...>;
    /// The record that is there now, and whether it was added.
    using Added = std::pair<const Record*, bool>;

    Table() = default;
    explicit Table(Hash hash, Equal equal = {}) : keys_(std::move(hash), std::move(equal)) {}
    template <std::input_iterator Iterator, std::sentinel_for<Iterator> Sentinel>
    Table(Iterator first, Sentinel last) {
        insert(std::move(first), std::move(last));
    }
    Table(std::initializer_list<Record> records) : Table(records.begin(), records.end()) {}
    /// @{
    /// A copy has no orders.
    Table(const Table& other) : keys_(other.keys_) {
        reserve(other.size());
        insert(other.begin(), other.end());
    }
    Table(Table&& other) noexcept { swap(other); }
    /// @}
    /// @{
    /// What this table held ends, with its orders.
    Table& operator=(const Table& other) {
        Table copy(other);
        swap(copy);
        return *this;
    }
    Table& operator=(Table&& other) noexcept {
        Table taken(std::move(other));
        swap(taken);
        return *this;
    }
    /// @}
    ~Table() {
        for (const auto& order : orders_) order->Detach();
    }

    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] size_type size() const noexcept {
        return static_cast<size_type>(records_.Count());
    }
    [[nodiscard]] static constexpr size_type max_size() noexcept { return size_type{1} << 30; }
    [[nodiscard]] iterator begin() const noexcept { return {records_, nullptr, 0}; }
    [[nodiscard]] iterator end() const noexcept { return iterator::End(records_); }
    [[nodiscard]] iterator cbegin() const noexcept { return begin(); }
    [[nodiscard]] iterator cend() const noexcept { return end(); }

    /// Look-ups, by whatever can be compared with the key: a number of another type finds the key
    /// of just its value. O(1).
    template <class Asked = key_type>
    [[nodiscard]] const Record* find(const Asked& key) const {
        const RecordNumber* const number = Locate(key);
        return number ? &records_.OfNumber(*number) : nullptr;
    }
    template <class Asked = key_type>
    [[nodiscard]] bool contains(const Asked& key) const {
        return Locate(key) != nullptr;
    }
    /// Throws std::out_of_range, which names the key.
    template <class Asked = key_type>
    [[nodiscard]] const Record& at(const Asked& key) const {
        if (const Record* const record = find(key)) [[likely]]
            return *record;
        detail::RaiseNoKey(detail::KeyWords(key));
    }
    /// Where a record stands in the order of insertion.
    template <class Asked = key_type>
    [[nodiscard]] std::optional<size_type> position_of(const Asked& key) const {
        const RecordNumber* const number = Locate(key);
        if (!number) return std::nullopt;
        return static_cast<size_type>(records_.PositionOf(*number) - 1);
    }
    /// The record at a position. Throws std::out_of_range. O(1) while nothing was taken away from
    /// between, else O(log n).
    [[nodiscard]] const Record& nth(size_type position) const {
        if (position < max_size()) [[likely]] {
            const Record* const record = records_.Find(static_cast<std::int32_t>(position) + 1);
            if (record) [[likely]]
                return *record;
        }
        detail::RaiseNoPosition(position, size());
    }

    /// @{
    /// Adds a record behind all others, unless its key is in use; then the argument is what it was.
    /// O(1) on average, and O(log n) for each kept order.
    Added insert(Record&& record) { return Add(std::move(record)); }
    Added insert(const Record& record);
    template <std::input_iterator Iterator, std::sentinel_for<Iterator> Sentinel>
    void insert(Iterator first, Sentinel last);
    void insert(std::initializer_list<Record> records) { insert(records.begin(), records.end()); }
    /// @}
    template <std::ranges::input_range Range>
    requires(!std::convertible_to<Range, Record> &&
             std::convertible_to<std::ranges::range_reference_t<Range>,
                                 Record>) void insert(Range&& records) {
        insert(std::ranges::begin(records), std::ranges::end(records));
    }
    template <class... Arguments>
    Added emplace(Arguments&&... arguments) {
        return Add(Keys::Make(std::forward<Arguments>(arguments)...));
    }
    /// Adds Record{key, arguments...}, unless the key is in use; then nothing is made.
    template <class Asked = key_type, class... Arguments>
    Added try_emplace(Asked&& key, Arguments&&... arguments);
    /// Adds a record, or puts it in the place of the one with its key.
    Added insert_or_assign(Record record);

    /// Changes a record; false when there is none. The function gets a copy, which is put in the
    /// record's place; it may change the key as well, and shall not use the table. Throws
    /// std::invalid_argument when the new key is in use. O(log n) for each order that changes.
    /// Instead of a key, these and erase and extract take the pointer that a look-up gave; one to
    /// no place of this table is no record.
    template <class Asked = key_type, std::invocable<Record&> Change>
    requires std::copy_constructible<Record>
    bool update(const Asked& key, Change&& change) {
        const auto number = NumberFor(key);
        if (number) ChangeWhole(*number, change);
        return number.has_value();
    }
    /// Changes one data member. O(1) where neither the key nor an order may depend on it, beside a
    /// copy of the member. One that cannot be copied is changed where it lies, and stays as the
    /// function left it when that throws; an order that cannot follow it then is dropped.
    template <class Asked = key_type, class Member, class Class, std::invocable<Member&> Change>
    bool update(const Asked& key, Member Class::*column, Change&& change) {
        const auto number = NumberFor(key);
        if (number) ChangeColumn(*number, static_cast<Member Record::*>(column), change);
        return number.has_value();
    }
    template <class Asked = key_type, class Member, class Class, class Value = Member>
    requires std::is_assignable_v<Member&, Value&&>
    bool set(const Asked& key, Member Class::*column, Value&& value) {
        return update(key, column, [&](Member& member) { member = std::forward<Value>(value); });
    }

    /// Takes a record away; gives how many there were. O(1), and O(log n) for each kept order.
    template <class Asked = key_type>
    requires(!std::convertible_to<const Asked&, const_iterator>) size_type erase(const Asked& key) {
        return extract(key) ? 1 : 0;
    }
    /// Gives an iterator to the one behind it.
    iterator erase(const_iterator at) {
        const auto position = static_cast<size_type>(at.Position());
        if (position >= size()) detail::RaiseNoPosition(position, size());
        static_cast<void>(Take(NumberAt(position)));
        return {records_, nullptr, static_cast<std::uint32_t>(position)};
    }
    /// Takes away all records for which it holds, in one pass; gives how many. O(n).
    template <std::predicate<const Record&> Predicate>
    size_type erase_if(Predicate predicate);
    template <class Asked = key_type>
    std::optional<Record> extract(const Asked& key) {
        const auto number = NumberFor(key);
        if (!number) return std::nullopt;
        return Take(*number);
    }
    /// @{
    /// Moves every record over whose key is not here. Where it throws, those in front are here.
    void merge(Table& other);
    void merge(Table&& other) { merge(other); }
    /// @}
    /// The orders stay, empty.
    void clear() noexcept;
    void reserve(size_type count);

    /// The order by these columns (zorvane/table/Columns.h), kept from now on, or since it was
    /// asked for first. Functions that capture something are another order each time. O(n log n),
    /// or O(1).
    template <class... Columns>
    TableOrder<Table, Columns...> order(Columns... columns);
    /// Keeps it no longer; every handle of it becomes empty.
    template <class... Columns>
    void drop(const TableOrder<Table, Columns...>& order) noexcept;
    /// An order that is not kept. O(n log n).
    template <class... Columns>
    [[nodiscard]] std::vector<const Record*> sorted_by(Columns... columns) const;

    friend void swap(Table& left, Table& right) noexcept { left.swap(right); }
    void swap(Table& other) noexcept {
        detail::Exchange(keys_, other.keys_);
        detail::Exchange(records_, other.records_);
        detail::Exchange(index_, other.index_);
        detail::Exchange(orders_, other.orders_);
        Own();
        other.Own();
    }
    /// The same records in the same order of insertion.
    friend bool operator==(const Table& left,
                           const Table& right) requires std::equality_comparable<Record> {
        return std::ranges::equal(left, right);
    }

  private:
    template <class Owner, class... Columns>
    friend class TableOrder;
    using Kept = detail::KeptOrder<Table>;

    [[nodiscard]] std::uint32_t Count() const noexcept {
        return static_cast<std::uint32_t>(records_.Count());
    }
    template <class Asked>
    [[nodiscard]] const RecordNumber* Locate(const Asked& key) const {
        return keys_.As(key, [&](const auto& asked) { return Locate(asked, keys_.HashOf(asked)); });
    }
    template <class Asked>
    [[nodiscard]] const RecordNumber* Locate(const Asked& key, std::uint32_t hash) const {
        return index_.Find(hash, [&](RecordNumber number) {
            return keys_.Equals(records_.OfNumber(number), key);
        });
    }
    template <class Asked>
    [[nodiscard]] std::optional<RecordNumber> NumberFor(const Asked& key) const;
    [[nodiscard]] RecordNumber NumberAt(size_type position) const noexcept {
        return records_.NumberAt(static_cast<std::int32_t>(position) + 1);
    }
    void Own() noexcept {
        for (const auto& order : orders_) order->Attach(this, &records_);
    }
    Added Add(Record&& record);
    const Record* AddNew(Record&& record, std::uint32_t hash);
    template <class Change>
    void ChangeWhole(RecordNumber number, Change& change);
    template <class Column, class Change>
    void ChangeColumn(RecordNumber number, Column column, Change& change);
    template <class Column, class Change>
    void ChangeInPlace(RecordNumber number, Column column, Change& change);
    void Replace(RecordNumber number, Record&& record);
    void FindPlaces(RecordNumber number, const Record& record);
    void Follow(RecordNumber number, std::uint32_t before, std::uint32_t after) noexcept;
    void FollowOrDrop(RecordNumber number) noexcept;
    [[nodiscard]] Record Take(RecordNumber number);
    [[nodiscard]] Record Forget(RecordNumber number, std::uint32_t hash) noexcept;
    [[nodiscard]] Record TakeOut(RecordNumber number) noexcept;

    [[no_unique_address]] Keys keys_;
    RecordStore<Record> records_;
    KeyIndex index_;
    std::vector<std::shared_ptr<Kept>> orders_;
};

}  // namespace zorvane

#include "zorvane/table/detail/TableChanges.h"
