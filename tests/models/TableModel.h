#pragma once
// TableModel: a table as plain as can be: a vector, searched from its beginning, with the members
// of Table, so that an operation is told once for both.

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "zorvane/table/detail/Raise.h"

namespace zorvane {

template <class Record>
class TableModel {
    std::vector<Record> records_;

  public:
    using Key = decltype(Record::Key);
    using Place = typename std::vector<Record>::iterator;

    auto begin() const { return records_.begin(); }
    auto end() const { return records_.end(); }
    std::size_t size() const { return records_.size(); }
    void clear() { records_.clear(); }
    void reserve(std::size_t) {}
    void swap(TableModel& other) { records_.swap(other.records_); }

    const Record* find(const Key& key) const {
        const auto found = std::ranges::find(records_, key, &Record::Key);
        return found == end() ? nullptr : &*found;
    }
    template <class Asked>
    const Record& at(const Asked& asked) const {
        const Key key(asked);
        if (const Record* const found = find(key)) return *found;
        throw std::out_of_range("no record has the key " + detail::KeyWords(key));
    }
    const Record& nth(std::size_t position) const {
        if (position < size()) return records_[position];
        throw std::out_of_range("position " + std::to_string(position) + " of " +
                                std::to_string(size()) + " records");
    }
    std::optional<std::size_t> position_of(const Key& key) const {
        const Record* const found = find(key);
        return found ? std::optional(found - records_.data()) : std::nullopt;
    }

    std::pair<const Record*, bool> insert(Record record) {
        if (const Record* const found = find(record.Key)) return {found, false};
        return {&records_.emplace_back(std::move(record)), true};
    }
    std::pair<const Record*, bool> insert_or_assign(Record record) {
        const Place place = PlaceOf(record.Key);
        if (place == records_.end()) return insert(std::move(record));
        *place = std::move(record);
        return {&*place, false};
    }
    template <class... Arguments>
    std::pair<const Record*, bool> try_emplace(const Arguments&... arguments) {
        return insert({arguments..., {}});
    }
    void merge(TableModel& other) {
        std::vector<Record> stay;
        for (Record& record : other.records_) {
            (find(record.Key) ? stay : records_).push_back(std::move(record));
        }
        other.records_ = std::move(stay);
    }

    Place erase(typename std::vector<Record>::const_iterator at) { return records_.erase(at); }
    template <class Predicate>
    std::size_t erase_if(Predicate predicate) {
        return std::erase_if(records_, predicate);
    }
    std::optional<Record> extract(const Key& key) {
        const Place place = PlaceOf(key);
        if (place == records_.end()) return std::nullopt;
        std::optional<Record> taken(std::move(*place));
        records_.erase(place);
        return taken;
    }

    // By a key, or by the pointer that a look-up gave; the part is the record or a column of it.
    template <class Asked, class Change>
    bool update(const Asked& asked, Change change) {
        return update(asked, std::identity(), change);
    }
    template <class Asked, class Part, class Change>
    bool update(const Asked& asked, Part part, Change change) {
        const Place place = PlaceOf(asked);
        if (place == records_.end()) return false;
        auto& now = std::invoke(part, *place);
        if constexpr (std::copyable<std::remove_reference_t<decltype(now)>>) {
            auto other = now;
            change(other);
            std::swap(now, other);
            if (std::ranges::count(records_, place->Key, &Record::Key) == 1) return true;
            const std::string key = detail::KeyWords(place->Key);
            std::swap(now, other);
            throw std::invalid_argument("another record has the key " + key);
        }
        return change(now), true;
    }
    template <class Asked, class Part, class Value>
    bool set(const Asked& asked, Part part, const Value& value) {
        return update(asked, part, [&](auto& now) { now = value; });
    }

    // The records as an order shows them.
    template <class Less>
    std::vector<const Record*> Sorted(Less less) const {
        std::vector<const Record*> sorted;
        for (const Record& record : records_) sorted.push_back(&record);
        std::ranges::stable_sort(sorted, [&](auto* a, auto* b) { return less(*a, *b); });
        return sorted;
    }

  private:
    Place PlaceOf(const Record* record) {
        return record ? records_.begin() + (record - records_.data()) : records_.end();
    }
    Place PlaceOf(const Key& key) { return PlaceOf(find(key)); }
};

}  // namespace zorvane
