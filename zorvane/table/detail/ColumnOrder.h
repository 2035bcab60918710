#pragma once
// ColumnOrder: a kept order by certain columns, and how it is searched.
//
// A search goes by prefixes of the first column (SortPrefix) as far as these tell records apart;
// where all its texts begin alike, by what comes behind that.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

#include "zorvane/runtime/PrefixedSort.h"
#include "zorvane/table/detail/KeptOrder.h"

namespace zorvane::detail {

// The units with which all texts of the first column begin: past these, prefixes tell most.
template <class Record, class List>
[[nodiscard]] std::size_t CommonLead(const RecordStore<Record>& records, const List& columns) {
    if (records.Count() == 0) return 0;
    std::size_t lead = std::numeric_limits<std::size_t>::max();
    for (std::int32_t position = 1; position <= records.Count() && lead != 0; ++position)
        lead = std::min(lead, columns.SharedLeadOf(records.At(1), records.At(position)));
    return lead;
}

// The numbers of a store's records in the order of columns; ties stand as in the store.
template <class Record, class List>
[[nodiscard]] std::vector<RecordNumber> SortedNumbers(const RecordStore<Record>& records,
                                                      const List& columns) {
    std::vector<PrefixedNumber> elements;
    elements.reserve(static_cast<std::size_t>(records.Count()));
    std::size_t lead = 0;
    if constexpr (List::kHasText) lead = CommonLead(records, columns);
    for (std::int32_t position = 1; position <= records.Count(); ++position) {
        const RecordNumber number = records.NumberAt(position);
        std::uint64_t prefix = 0;
        if constexpr (List::kHasPrefix) prefix = columns.PrefixOf(records.OfNumber(number), lead);
        elements.push_back({prefix, number});
    }
    const auto less = [&](RecordNumber left, RecordNumber right) {
        if constexpr (List::kPrefixTellsAll) {
            return false;
        } else {
            return columns.Compare(records.OfNumber(left), records.OfNumber(right)) < 0;
        }
    };
    SortPrefixed(elements, TieLess(less));
    std::vector<RecordNumber> numbers(elements.size());
    std::ranges::transform(elements, numbers.begin(), &PrefixedNumber::Number);
    return numbers;
}

template <class Table, class... Columns>
class ColumnOrder final : public KeptOrder<Table> {
    using Base = KeptOrder<Table>;
    using typename Base::Record;
    using List = ColumnList<Record, Columns...>;

  public:
    explicit ColumnOrder(List columns) : Base(&kTag<ColumnOrder>), columns_(std::move(columns)) {}

    // Right behind Attach: takes the table's records in.
    void Build() {
        const RecordStore<Record>& records = *this->Records();
        numbers_.SetBlocks(SortedNumbers(records, columns_), records.LeastNumber(),
                           records.Places());
        if constexpr (List::kHasPrefix) {
            if constexpr (kUsesLead) JudgeLead();
            AttachPrefixes();
        }
    }
    [[nodiscard]] bool Same(const List& columns) const { return columns_.Same(columns); }

    [[nodiscard]] bool LooksAt(MemberName member) const noexcept override {
        return columns_.LooksAt(member);
    }
    [[nodiscard]] bool Ties(const Record& left, const Record& right) const override {
        return columns_.Compare(left, right) == 0;
    }
    // Behind all that tie with it: it is to stand last in the table.
    void Seek(const Record& record) override {
        const Stretch among = Narrow(record);
        this->place_ = PartitionPoint(
            among, [&](const Record& other) { return columns_.Compare(other, record) <= 0; });
    }
    void SeekFor(RecordNumber own, const Record& record) override {
        const Stretch among = Narrow(record);
        const std::uint32_t now = numbers_.PositionOf(own);
        const std::int32_t age = this->Records()->PositionOf(own);
        const auto before = [&](RecordNumber other) {
            const auto order = columns_.Compare(this->Records()->OfNumber(other), record);
            return order < 0 || (order == 0 && this->Records()->PositionOf(other) < age);
        };
        // Its own entry is passed over: the rest is in order on either side.
        const std::uint32_t before1 = std::min(now, among.past);
        const bool inFront = among.first < before1 && !before(numbers_.At(before1 - 1));
        if (inFront || now >= among.past) {
            this->place_ = numbers_.PartitionPoint(among.first, before1, before);
        } else {
            const std::uint32_t from = std::max(among.first, now + 1);
            // One less, since its own entry goes first.
            this->place_ = numbers_.PartitionPoint(from, std::max(from, among.past), before) - 1;
        }
    }

    // The first position whose record does not stand in front of the values, or with `behind`, the
    // first that stands behind them.
    template <class... Values>
    [[nodiscard]] std::uint32_t Bound(bool behind, const Values&... values) const {
        static_assert(sizeof...(Values) > 0 && sizeof...(Values) <= sizeof...(Columns),
                      "as many values as columns at most");
        if (numbers_.Count() == 0) return 0;
        const std::tuple<const Values&...> asked(values...);
        return PartitionPoint(NarrowFor(std::get<0>(asked)), [&](const Record& record) {
            const auto order = columns_.CompareWith(record, asked);
            return order < 0 || (behind && order == 0);
        });
    }
    template <class... Values>
    [[nodiscard]] bool Begins(const Record& record, const Values&... values) const {
        return columns_.CompareWith(record, std::tuple<const Values&...>(values...)) == 0;
    }

  private:
    // Positions first..past-1.
    struct Stretch {
        std::uint32_t first;
        std::uint32_t past;
    };
    // Where a change needs the prefixes anew, the record that changes must lie apart from the one
    // that it was: so only those that can be copied.
    static constexpr bool kUsesLead = List::kHasText && std::is_copy_constructible_v<Record>;
    using Base::numbers_;

    [[nodiscard]] const Record& RecordAt(std::uint32_t position) const noexcept {
        return this->Records()->OfNumber(numbers_.At(position));
    }
    template <class Before>
    [[nodiscard]] std::uint32_t PartitionPoint(Stretch among, Before&& before) const {
        return numbers_.PartitionPoint(among.first, among.past, [&](RecordNumber number) {
            return before(this->Records()->OfNumber(number));
        });
    }
    void AttachPrefixes() {
        numbers_.AttachPrefixes([&](RecordNumber number) {
            return columns_.PrefixOf(this->Records()->OfNumber(number), lead_);
        });
    }
    // The texts are in order, so what the first and the last share all share.
    void JudgeLead() {
        const std::uint32_t count = numbers_.Count();
        judgedAt_ = std::max(count, kWorthwhile);
        lead_ = count == 0 ? 0 : columns_.SharedLeadOf(RecordAt(0), RecordAt(count - 1));
    }
    // Sees to it that the prefixes fit a text that is to come.
    void FitLead(const Record& record) {
        if (numbers_.Count() == 0) {
            lead_ = 0;
            return;
        }
        const std::size_t shared = lead_ == 0 && numbers_.Count() < judgedAt_ * 2
                                       ? 0
                                       : columns_.SharedLeadOf(RecordAt(0), record);
        const bool fits = shared >= lead_;
        if (fits && numbers_.Count() < judgedAt_ * 2) return;
        const std::size_t before = lead_;
        JudgeLead();
        lead_ = std::min(lead_, shared);
        if (fits && lead_ <= before) {
            lead_ = before;
            return;
        }
        try {
            AttachPrefixes();
        } catch (...) {
            lead_ = before;
            throw;
        }
    }
    // Notes the prefix of a record that is to come, and among which it belongs.
    [[nodiscard]] Stretch Narrow(const Record& record) {
        if constexpr (List::kHasPrefix) {
            if constexpr (kUsesLead) FitLead(record);
            this->prefix_ = columns_.PrefixOf(record, lead_);
            return WithPrefix(this->prefix_);
        } else {
            return {0, numbers_.Count()};
        }
    }
    template <class Asked>
    [[nodiscard]] Stretch NarrowFor(const Asked& value) const {
        std::uint64_t prefix = 0;
        if constexpr (List::kHasPrefix) {
            const bool fits = lead_ == 0 || columns_.SharedLeadWith(RecordAt(0), value) >= lead_;
            if (fits && List::PrefixOfValue(value, lead_, prefix)) return WithPrefix(prefix);
        }
        return {0, numbers_.Count()};
    }
    [[nodiscard]] Stretch WithPrefix(std::uint64_t prefix) const noexcept {
        const auto [first, past] = numbers_.EqualPrefixes(prefix);
        return {first, past};
    }

    static constexpr std::uint32_t kWorthwhile = 64;
    List columns_;
    std::size_t lead_ = 0;                  // units that all texts of the first column share
    std::uint32_t judgedAt_ = kWorthwhile;  // the count at which the lead was last looked for
};

}  // namespace zorvane::detail
