#pragma once
// What changes a Table: every change is made possible and its places are found, which may fail, and
// only then done, which cannot. Part of zorvane/table/Table.h.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace zorvane {

#define ZORVANE_TABLE template <class Record, auto kKey, class Hash, class Equal>
#define ZORVANE_TABLE_OF Table<Record, kKey, Hash, Equal>

namespace detail {

// What can be copied is what it was if the change throws.
template <class Member, class Change>
void ChangeMember(Member& member, Change& change) {
    if constexpr (std::copy_constructible<Member> && std::is_nothrow_swappable_v<Member>) {
        Member changed(std::as_const(member));
        std::invoke(change, changed);
        Exchange(member, changed);
    } else {
        std::invoke(change, member);
    }
}

}  // namespace detail

ZORVANE_TABLE
auto ZORVANE_TABLE_OF::Add(Record&& record) -> Added {
    const std::uint32_t hash = keys_.HashOfRecord(record);
    if (const RecordNumber* const number = Locate<key_type>(keys_.Of(record), hash))
        return {&records_.OfNumber(*number), false};
    return {AddNew(std::move(record), hash), true};
}

ZORVANE_TABLE
auto ZORVANE_TABLE_OF::insert(const Record& record) -> Added {
    const std::uint32_t hash = keys_.HashOfRecord(record);
    if (const RecordNumber* const number = Locate<key_type>(keys_.Of(record), hash))
        return {&records_.OfNumber(*number), false};
    return {AddNew(Record(record), hash), true};
}

ZORVANE_TABLE
const Record* ZORVANE_TABLE_OF::AddNew(Record&& record, std::uint32_t hash) {
    if (size() == max_size()) detail::RaiseFull();
    const std::int32_t position = records_.Count() + 1;
    records_.Reserve(position);
    index_.Reserve(Count() + 1);
    for (const auto& order : orders_) {
        order->Seek(record);
        order->Prepare();
    }
    const RecordNumber number = records_.Open(position);
    const Record* const added = std::construct_at(&records_.OfNumber(number), std::move(record));
    for (const auto& order : orders_) order->Insert(number);
    index_.Insert(hash, number);
    return added;
}

ZORVANE_TABLE
template <std::input_iterator Iterator, std::sentinel_for<Iterator> Sentinel>
void ZORVANE_TABLE_OF::insert(Iterator first, Sentinel last) {
    for (; first != last; ++first) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(*first)>, Record>) {
            insert(*first);
        } else {
            Add(Record(*first));
        }
    }
}

ZORVANE_TABLE
template <class Asked, class... Arguments>
auto ZORVANE_TABLE_OF::try_emplace(Asked&& key, Arguments&&... arguments) -> Added {
    if (const RecordNumber* const number = Locate(key)) return {&records_.OfNumber(*number), false};
    return Add(
        Keys::Make(key_type(std::forward<Asked>(key)), std::forward<Arguments>(arguments)...));
}

ZORVANE_TABLE
auto ZORVANE_TABLE_OF::insert_or_assign(Record record) -> Added {
    const std::uint32_t hash = keys_.HashOfRecord(record);
    const RecordNumber* const found = Locate<key_type>(keys_.Of(record), hash);
    if (!found) return {AddNew(std::move(record), hash), true};
    const RecordNumber number = *found;
    Replace(number, std::move(record));
    return {&records_.OfNumber(number), false};
}

ZORVANE_TABLE
template <class Asked>
auto ZORVANE_TABLE_OF::NumberFor(const Asked& key) const -> std::optional<RecordNumber> {
    if constexpr (std::is_same_v<Asked, const Record*> || std::is_same_v<Asked, Record*>) {
        return records_.HasPlace(key) ? std::optional(records_.NumberOf(*key)) : std::nullopt;
    } else {
        const RecordNumber* const number = Locate(key);
        return number ? std::optional(*number) : std::nullopt;
    }
}

ZORVANE_TABLE
template <class Change>
void ZORVANE_TABLE_OF::ChangeWhole(RecordNumber number, Change& change) {
    Record changed(std::as_const(records_.OfNumber(number)));
    std::invoke(change, changed);
    Replace(number, std::move(changed));
}

// Puts another record in the place of one.
ZORVANE_TABLE
void ZORVANE_TABLE_OF::Replace(RecordNumber number, Record&& record) {
    Record& old = records_.OfNumber(number);
    const std::uint32_t before = keys_.HashOfRecord(old);
    const std::uint32_t after = keys_.HashOfRecord(record);
    for (const auto& order : orders_) order->Join(!order->Ties(old, record));
    FindPlaces(number, record);
    Follow(number, before, after);
    [[maybe_unused]] const Record doomed(TakeOut(number));  // ends last
    std::construct_at(&old, std::move(record));
}

// Sees to it that a record can be this one: no other has its key, and every order that joins in has
// a place for it.
ZORVANE_TABLE
void ZORVANE_TABLE_OF::FindPlaces(RecordNumber number, const Record& record) {
    const auto isOther = [&](RecordNumber other) {
        return other != number &&
               keys_.template Equals<key_type>(records_.OfNumber(other), keys_.Of(record));
    };
    if (index_.Find(keys_.HashOfRecord(record), isOther))
        detail::RaiseKeyInUse(detail::KeyWords<key_type>(keys_.Of(record)));
    for (const auto& order : orders_) {
        if (!order->Joins()) continue;
        order->SeekFor(number, record);
        order->Prepare();
    }
}

// Behind FindPlaces: moves a number there.
ZORVANE_TABLE
void ZORVANE_TABLE_OF::Follow(RecordNumber number, std::uint32_t before,
                              std::uint32_t after) noexcept {
    for (const auto& order : orders_) {
        if (order->Joins()) order->Move(number);
    }
    if (before == after) return;
    index_.Erase(before, number);
    index_.Insert(after, number);
}

ZORVANE_TABLE
template <class Column, class Change>
void ZORVANE_TABLE_OF::ChangeColumn(RecordNumber number, Column column, Change& change) {
    const detail::MemberName name{&detail::kTag<Column>, &column};
    bool matters = Keys::LooksAt(column);
    for (const auto& order : orders_) {
        order->Join(order->LooksAt(name));
        matters = matters || order->Joins();
    }
    if (!matters) {
        detail::ChangeMember(records_.OfNumber(number).*column, change);
    } else if constexpr (std::copy_constructible<Record>) {
        auto changeMember = [&](Record& changed) { std::invoke(change, changed.*column); };
        ChangeWhole(number, changeMember);
    } else {
        ChangeInPlace(number, column, change);
    }
}

// Of a record that cannot be copied: where it lies, and back if anything fails.
ZORVANE_TABLE
template <class Column, class Change>
void ZORVANE_TABLE_OF::ChangeInPlace(RecordNumber number, Column column, Change& change) {
    using Member = std::remove_reference_t<decltype(std::declval<Record&>().*column)>;
    Record& record = records_.OfNumber(number);
    if constexpr (std::copy_constructible<Member>) {
        const std::uint32_t before = keys_.HashOfRecord(record);
        static_assert(std::is_nothrow_swappable_v<Member>, "a column is put back by a swap");
        using std::swap;
        Member changed(std::as_const(record.*column));
        std::invoke(change, changed);
        swap(record.*column, changed);
        std::uint32_t after = before;
        try {
            FindPlaces(number, record);
            after = keys_.HashOfRecord(record);
        } catch (...) {
            swap(record.*column, changed);
            throw;
        }
        Follow(number, before, after);
    } else {
        // What is done to it cannot be undone, so the orders follow whatever is thrown.
        static_assert(Keys::kIsMember, "the key may depend on what cannot be put back");
        struct Following {
            Table& table;
            RecordNumber number;
            ~Following() { table.FollowOrDrop(number); }
        } const following{*this, number};
        std::invoke(change, record.*column);
    }
}

// Lets the orders that join in follow a record; one that cannot find a place for it is dropped.
ZORVANE_TABLE
void ZORVANE_TABLE_OF::FollowOrDrop(RecordNumber number) noexcept {
    std::erase_if(orders_, [&](const auto& order) {
        if (!order->Joins()) return false;
        try {
            order->SeekFor(number, records_.OfNumber(number));
            order->Prepare();
        } catch (...) {
            order->Detach();
            return true;
        }
        order->Move(number);
        return false;
    });
}

// Takes a record out of the store, the index and every order.
ZORVANE_TABLE
Record ZORVANE_TABLE_OF::Take(RecordNumber number) {
    const std::uint32_t hash = keys_.HashOfRecord(records_.OfNumber(number));
    records_.PrepareClose(records_.PositionOf(number));
    return Forget(number, hash);
}

// The same behind PrepareClose.
ZORVANE_TABLE
Record ZORVANE_TABLE_OF::Forget(RecordNumber number, std::uint32_t hash) noexcept {
    const std::int32_t position = records_.PositionOf(number);
    Record taken = TakeOut(number);
    for (const auto& order : orders_) order->Remove(number);
    index_.Erase(hash, number);
    records_.Close(position, number);
    return taken;
}

ZORVANE_TABLE
Record ZORVANE_TABLE_OF::TakeOut(RecordNumber number) noexcept {
    Record& record = records_.OfNumber(number);
    Record taken(std::move(record));
    std::destroy_at(&record);
    return taken;
}

ZORVANE_TABLE
template <std::predicate<const Record&> Predicate>
auto ZORVANE_TABLE_OF::erase_if(Predicate predicate) -> size_type {
    DoomedRecords<Record> doomed(
        records_, [&](const Record& record) -> bool { return std::invoke(predicate, record); },
        [&](RecordNumber number) { return keys_.HashOfRecord(records_.OfNumber(number)); });
    const size_type count = doomed.Count();
    if (count == 0) return 0;
    if (count == size()) {
        clear();
        return count;
    }
    doomed.Prepare(records_);
    doomed.TakeOut(records_, index_, [&](const auto& isDoomed) {
        for (const auto& order : orders_) order->RemoveIf(isDoomed);
    });
    return count;
}

ZORVANE_TABLE
void ZORVANE_TABLE_OF::merge(Table& other) {
    if (&other == this) return;
    for (size_type position = 0; position < other.size();) {
        const Record& record = other.nth(position);
        if (contains<key_type>(keys_.Of(record))) {
            ++position;
            continue;
        }
        const RecordNumber number = other.NumberAt(position);
        const std::uint32_t hash = other.keys_.HashOfRecord(record);
        other.records_.PrepareClose(static_cast<std::int32_t>(position) + 1);
        // Moved from where it lies once nothing can fail.
        AddNew(std::move(other.records_.OfNumber(number)), keys_.HashOfRecord(record));
        static_cast<void>(other.Forget(number, hash));
    }
}

ZORVANE_TABLE
void ZORVANE_TABLE_OF::clear() noexcept {
    for (const auto& order : orders_) order->RemoveAll();
    KeyIndex none;
    detail::Exchange(index_, none);
    records_.Clear();
}

ZORVANE_TABLE
void ZORVANE_TABLE_OF::reserve(size_type count) {
    if (count > max_size()) detail::RaiseFull();
    records_.Reserve(static_cast<std::int32_t>(count));
    index_.Reserve(static_cast<std::uint32_t>(count));
}

ZORVANE_TABLE
template <class... Columns>
auto ZORVANE_TABLE_OF::order(Columns... columns) -> TableOrder<Table, Columns...> {
    using Typed = detail::ColumnOrder<Table, Columns...>;
    const detail::ColumnList<Record, Columns...> list(std::move(columns)...);
    for (const auto& kept : orders_) {
        if (kept->Tag() != &detail::kTag<Typed>) continue;
        auto typed = std::static_pointer_cast<const Typed>(kept);
        if (typed->Same(list)) return TableOrder<Table, Columns...>(std::move(typed));
    }
    auto made = std::make_shared<Typed>(list);
    made->Attach(this, &records_);
    made->Build();
    orders_.push_back(made);
    return TableOrder<Table, Columns...>(std::move(made));
}

ZORVANE_TABLE
template <class... Columns>
void ZORVANE_TABLE_OF::drop(const TableOrder<Table, Columns...>& order) noexcept {
    const auto isIt = [&](const auto& kept) { return kept == order.kept_; };
    const auto found = std::ranges::find_if(orders_, isIt);
    if (found == orders_.end()) return;
    (*found)->Detach();
    orders_.erase(found);
}

ZORVANE_TABLE
template <class... Columns>
auto ZORVANE_TABLE_OF::sorted_by(Columns... columns) const -> std::vector<const Record*> {
    const detail::ColumnList<Record, Columns...> list(std::move(columns)...);
    const std::vector<RecordNumber> numbers = detail::SortedNumbers(records_, list);
    std::vector<const Record*> sorted(numbers.size());
    std::ranges::transform(numbers, sorted.begin(),
                           [this](RecordNumber number) { return &records_.OfNumber(number); });
    return sorted;
}

#undef ZORVANE_TABLE
#undef ZORVANE_TABLE_OF

}  // namespace zorvane
