#pragma once
// RecordStore: records in an order, each with a number that stays its own while it lives.
//
// Records never move one by one: inserting or removing shifts 4-byte numbers (RecordOrder), and
// growth or a sort moves all records once, as raw bytes where they are relocatable
// (zorvane/platform/Relocate.h). Memory is touched as records need it. Insert and Reorder need
// relocatable records with all-zero bytes as their empty state; others are opened and made in
// place. Positions count from 1.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "zorvane/platform/LargeBlock.h"
#include "zorvane/platform/Relocate.h"
#include "zorvane/runtime/RecordOrder.h"

namespace zorvane {

template <class Record>
class RecordStore {
    static_assert(kRelocatable<Record> || std::is_nothrow_move_constructible_v<Record>);

  public:
    RecordStore() = default;
    RecordStore(RecordStore&& other) noexcept { swap(*this, other); }
    RecordStore& operator=(RecordStore&& other) noexcept {
        RecordStore taken(std::move(other));
        swap(*this, taken);
        return *this;
    }
    ~RecordStore() {
        for (std::int32_t position = 1; position <= Count(); ++position) At(position).~Record();
        Free(records_, Places());
    }

    [[nodiscard]] std::int32_t Count() const noexcept {
        return static_cast<std::int32_t>(order_.Count());
    }
    // The record at a position 1..Count(); valid until a record is inserted or the order replaced.
    [[nodiscard]] Record& At(std::int32_t position) noexcept {
        const std::uint32_t at = Index(position);
        if (at < lined_) [[likely]]
            return line_[at];
        return OfNumber(order_.At(at));
    }
    [[nodiscard]] const Record& At(std::int32_t position) const noexcept {
        return const_cast<RecordStore*>(this)->At(position);
    }
    // The same, or null outside 1..Count().
    [[nodiscard]] Record* Find(std::int32_t position) noexcept {
        const std::uint32_t at = Index(position);
        if (at < lined_) return line_ + at;
        if (const RecordNumber* const near = order_.Near(at)) [[likely]]
            return &OfNumber(*near);
        return FindFar(at);
    }
    [[nodiscard]] const Record* Find(std::int32_t position) const noexcept {
        return const_cast<RecordStore*>(this)->Find(position);
    }
    // The records from a position 1..Count() on, as far as they lie side by side, one at least; or
    // none where only their numbers do, which NumbersFrom gives.
    [[nodiscard]] std::span<const Record> RecordsFrom(std::int32_t position) const noexcept {
        if (!order_.IsRun()) return {};
        const std::uint32_t at = Index(position);
        return {Find(position), (at < lined_ ? lined_ : order_.Count()) - at};
    }
    [[nodiscard]] std::span<const RecordNumber> NumbersFrom(std::int32_t position) const noexcept {
        return order_.From(Index(position));
    }
    [[nodiscard]] RecordNumber NumberAt(std::int32_t position) const noexcept {
        const std::uint32_t at = Index(position);
        return at < lined_ ? order_.First() + at : order_.At(at);
    }
    [[nodiscard]] Record& OfNumber(RecordNumber number) noexcept {
        return records_[number & mask_];
    }
    [[nodiscard]] const Record& OfNumber(RecordNumber number) const noexcept {
        return records_[number & mask_];
    }
    // The number of a record that lies here.
    [[nodiscard]] RecordNumber NumberOf(const Record& record) const noexcept {
        const auto place = static_cast<std::uint32_t>(&record - records_);
        return LeastNumber() + ((place - LeastNumber()) & mask_);
    }
    // Whether a record could lie there.
    [[nodiscard]] bool HasPlace(const Record* record) const noexcept {
        const std::less<> before;
        return !before(record, records_) && before(record, records_ + Places());
    }
    // Numbers in use are not below LeastNumber(), and differ modulo Places().
    [[nodiscard]] RecordNumber LeastNumber() const noexcept {
        return order_.IsRun() ? order_.First() : base_;
    }
    [[nodiscard]] std::uint32_t Places() const noexcept { return records_ ? mask_ + 1 : 0; }
    [[nodiscard]] std::int32_t PositionOf(RecordNumber number) const noexcept {
        return Position(order_.PositionOf(number));
    }
    // Positions First..Past-1.
    struct Stretch {
        std::int32_t First;
        std::int32_t Past;
        [[nodiscard]] bool Empty() const noexcept { return First == Past; }
    };
    [[nodiscard]] Stretch All() const noexcept { return {1, Count() + 1}; }
    // The first position of a stretch whose record fails `before`, else the one behind it; those
    // that pass stand in front. O(log n) calls.
    template <class Before>
    [[nodiscard]] std::int32_t PartitionPoint(Stretch within, Before&& before) const {
        const auto passes = [&](RecordNumber number) { return before(OfNumber(number)); };
        return Position(order_.PartitionPoint(Index(within.First), Index(within.Past), passes));
    }

    // For a store whose records stand in an order that prefixOf(record) never contradicts: keeps
    // these 64-bit prefixes beside the order, so that a search compares integers. Every
    // record inserted from then on must come with its prefix, and at its place. O(n). May throw,
    // then nothing changed.
    template <class PrefixOf>
    void AttachPrefixes(PrefixOf&& prefixOf) {
        if (order_.IsRun()) LeaveRun();
        order_.AttachPrefixes([&](RecordNumber number) { return prefixOf(OfNumber(number)); });
    }
    void DropPrefixes() noexcept { order_.DropPrefixes(); }
    [[nodiscard]] bool HasPrefixes() const noexcept { return order_.HasPrefixes(); }
    // With prefixes: where records with a prefix stand; where they belong, if there are none.
    [[nodiscard]] Stretch WithPrefix(std::uint64_t prefix) const noexcept {
        const auto [first, past] = order_.EqualPrefixes(prefix);
        return {Position(first), Position(past)};
    }

    // Opens a zero record at a position 1..Count()+1 and gives its number; later ones move up.
    // O(1) at the ends of a run, else O(RecordOrder::kBlock). May throw, then nothing changed.
    RecordNumber Insert(std::int32_t position, std::uint64_t prefix = 0) {
        const RecordNumber number = Open(position, prefix);
        ZeroFill(&OfNumber(number), 1);
        return number;
    }
    // The same without a record: one has to be made there before anything else is done.
    RecordNumber Open(std::int32_t position, std::uint64_t prefix = 0) {
        const std::uint32_t at = Index(position);
        // Behind all of a run, with room there: what is done most.
        const bool isNext = at == order_.Count() && at == lined_ && at != 0;
        if (!isNext || line_ + at == records_ + Places()) return OpenElsewhere(at, prefix);
        order_.ResizeRun(order_.First(), at + 1);
        ++lined_;
        return order_.First() + at;
    }
    // Makes Close of this position possible. May throw, then nothing changed.
    void PrepareClose(std::int32_t position) {
        if (order_.IsRun() && position != 1 && position != Count()) LeaveRun();
    }
    // After PrepareClose: closes the position of the record with this number, which was moved away
    // (Taken). Later ones move down; the number may be given out again.
    void Close(std::int32_t position, RecordNumber number) noexcept;
    // Makes CloseIf possible. May throw, then nothing changed.
    void PrepareCloseIf() {
        if (order_.IsRun() && Count() != 0) LeaveRun();
    }
    // After PrepareCloseIf: closes the positions of all records, ended already, whose numbers are
    // doomed(number), in one pass.
    template <class Doomed>
    void CloseIf(Doomed&& doomed) noexcept;
    // Destroys every record.
    void Clear() noexcept;
    // Room for `count` records in all without moving any. May throw.
    void Reserve(std::int32_t count);
    // Puts the record that stood at position order[i]+1 at position i+1. Every record moves once,
    // where it can within its own block (pages that nobody touched yet cost more than the moves),
    // and gets a new number; renumber(newNumberOf) is called with a function of the old one, in
    // between, and must not fail. May throw, then nothing changed.
    template <class Renumber>
    void Reorder(std::span<const std::uint32_t> order, Renumber&& renumber);

    friend void swap(RecordStore& left, RecordStore& right) noexcept {
        std::swap(left.records_, right.records_);
        std::swap(left.mask_, right.mask_);
        std::swap(left.order_, right.order_);
        std::swap(left.line_, right.line_);
        std::swap(left.lined_, right.lined_);
        std::swap(left.vacant_, right.vacant_);
        std::swap(left.next_, right.next_);
        std::swap(left.base_, right.base_);
    }

  private:
    static constexpr std::uint32_t kLeast = 16;
    // The most records: places are a power of two, and positions have 31 bits.
    static constexpr std::uint32_t kMost = std::uint32_t{1} << 30;

    // Positions count from 1, those of the order from 0.
    [[nodiscard]] static std::uint32_t Index(std::int32_t position) noexcept {
        return static_cast<std::uint32_t>(position) - 1;
    }
    [[nodiscard]] static std::int32_t Position(std::uint32_t index) noexcept {
        return static_cast<std::int32_t>(index) + 1;
    }
    static Record* Allocate(std::size_t places) {
        return static_cast<Record*>(AllocateBlock(places * sizeof(Record)));
    }
    static void Free(Record* records, std::size_t places) noexcept {
        FreeBlock(records, places * sizeof(Record));
    }
    [[gnu::noinline]] RecordNumber OpenElsewhere(std::uint32_t at, std::uint64_t prefix);
    // Makes at least `places` places; numbers first..first+used-1 keep their records.
    void Grow(std::uint32_t places, RecordNumber first, std::uint32_t used);
    void LeaveRun();
    // Notes where the records of a run begin; due whenever they, their number or the order's form
    // changes.
    void LineUp() noexcept {
        const std::uint32_t from = order_.First() & mask_;
        line_ = records_ + from;
        lined_ = order_.IsRun() ? std::min(order_.Count(), mask_ + 1 - from) : 0;
    }
    RecordNumber NextNumber();
    [[gnu::noinline]] Record* FindFar(std::uint32_t at) noexcept {
        return at < order_.Count() ? &OfNumber(order_.At(at)) : nullptr;
    }
    // Whether the numbers in use follow one another, from LeastNumber() on.
    [[nodiscard]] bool IsCompact() const noexcept {
        return order_.IsRun() || next_ - base_ == order_.Count();
    }
    void Permute(RecordNumber first, std::span<RecordNumber> sources) noexcept;

    // Record number n stands at n % places, so a run may walk round the array.
    Record* records_ = nullptr;
    std::uint32_t mask_ = 0;  // places - 1, places a power of two
    RecordOrder order_;
    // The first records of a run, up to where it walks round: what is asked for most is found by
    // one comparison.
    Record* line_ = nullptr;
    std::uint32_t lined_ = 0;
    // While the order is no run: numbers free for use below next_, and the first never used.
    std::vector<RecordNumber> vacant_;
    RecordNumber next_ = 0;
    RecordNumber base_ = 0;  // numbers base_..next_-1 are live or vacant
};

template <class Record>
RecordNumber RecordStore<Record>::OpenElsewhere(std::uint32_t at, std::uint64_t prefix) {
    const std::uint32_t count = order_.Count();
    if (order_.IsRun() && (at == count || at == 0)) {
        if (count == Places()) Grow(count + 1, order_.First(), count);
        const bool inFront = at == 0 && count != 0;
        order_.ResizeRun(inFront ? order_.First() - 1 : order_.First(), count + 1);
        const RecordNumber number = order_.First() + at;
        LineUp();
        return number;
    }
    if (order_.IsRun()) LeaveRun();
    const RecordNumber number = NextNumber();
    order_.Insert(at, number, prefix);
    if (number == next_) {
        ++next_;
    } else {
        vacant_.pop_back();
    }
    return number;
}

template <class Record>
void RecordStore<Record>::LeaveRun() {
    // Every number that is live may become vacant where nothing may fail.
    vacant_.reserve(Places());
    order_.ToBlocks();
    vacant_.clear();
    base_ = order_.First();
    next_ = base_ + order_.Count();
    LineUp();
}

// The number that the next record gets; it is not taken yet.
template <class Record>
RecordNumber RecordStore<Record>::NextNumber() {
    if (!vacant_.empty()) return vacant_.back();
    const std::uint32_t used = next_ - base_;
    if (used == Places()) Grow(used + 1, base_, used);
    return next_;
}

template <class Record>
void RecordStore<Record>::Close(std::int32_t position, RecordNumber number) noexcept {
    const std::uint32_t at = Index(position);
    const std::uint32_t count = order_.Count();
    if (!order_.IsRun()) {
        order_.Erase(at);
        vacant_.push_back(number);
        if (count == 1) order_.SetRun(0, 0);
    } else if (at == 0 && lined_ > 1) {
        // What is done most in a run: the second record becomes the first.
        order_.ResizeRun(order_.First() + 1, count - 1);
        ++line_;
        --lined_;
    } else {
        order_.ResizeRun(at == 0 ? order_.First() + 1 : order_.First(), count - 1);
        LineUp();
    }
}

template <class Record>
template <class Doomed>
void RecordStore<Record>::CloseIf(Doomed&& doomed) noexcept {
    if (order_.IsRun()) return;
    order_.EraseIf([&](RecordNumber number) {
        const bool goes = doomed(number);
        if (goes) vacant_.push_back(number);
        return goes;
    });
    if (order_.Count() == 0) order_.SetRun(0, 0);
}

template <class Record>
void RecordStore<Record>::Clear() noexcept {
    // Taken out first: releasing a value may run code that looks at this store.
    RecordStore doomed;
    swap(*this, doomed);
}

template <class Record>
void RecordStore<Record>::Reserve(std::int32_t count) {
    const auto wanted = static_cast<std::uint32_t>(count);
    if (wanted <= Places()) return;
    if (order_.IsRun()) {
        Grow(wanted, order_.First(), order_.Count());
    } else {
        Grow(wanted, base_, next_ - base_);
    }
}

template <class Record>
void RecordStore<Record>::Grow(std::uint32_t places, RecordNumber first, std::uint32_t used) {
    if (places > kMost) throw std::length_error("RecordStore: too many records");
    const std::uint32_t wanted = std::bit_ceil(places < kLeast ? kLeast : places);
    // First, as removals, which must not fail, count on room for every number there is.
    if (!order_.IsRun()) vacant_.reserve(wanted);
    Record* const records = Allocate(wanted);
    for (std::uint32_t i = 0; i < used;) {
        // As long a stretch as neither array wraps.
        const std::uint32_t from = (first + i) & mask_;
        const std::uint32_t to = (first + i) & (wanted - 1);
        const std::uint32_t run = std::min({used - i, mask_ + 1 - from, wanted - to});
        MoveAll(records + to, records_ + from, run);
        i += run;
    }
    Free(records_, Places());
    records_ = records;
    mask_ = wanted - 1;
    LineUp();
}

template <class Record>
template <class Renumber>
void RecordStore<Record>::Reorder(std::span<const std::uint32_t> order, Renumber&& renumber) {
    static_assert(kRelocatable<Record>);
    const auto count = static_cast<std::uint32_t>(order.size());
    if (count == 0) return;
    std::vector<RecordNumber> newNumbers(Places());
    std::vector<RecordNumber> sources(count);
    const bool inPlace = IsCompact() && count * sizeof(Record) < kLargeBlock;
    Record* const records = inPlace ? records_ : Allocate(Places());
    const RecordNumber first = inPlace ? LeastNumber() : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        sources[i] = NumberAt(Position(order[i]));
        newNumbers[sources[i] & mask_] = first + i;
    }
    if (inPlace) {
        Permute(first, sources);
    } else {
        for (std::uint32_t i = 0; i < count; ++i) {
            RelocateOne(records + i, records_ + (sources[i] & mask_));
        }
        Free(records_, Places());
        records_ = records;
    }
    order_.SetRun(first, count);
    LineUp();
    renumber([&](RecordNumber old) { return newNumbers[old & mask_]; });
}

// Moves the record of number sources[i] to number first + i, for every i, where these are the same
// numbers. The sources are used up.
template <class Record>
void RecordStore<Record>::Permute(RecordNumber first, std::span<RecordNumber> sources) noexcept {
    alignas(Record) std::byte held[sizeof(Record)];
    for (std::uint32_t i = 0; i < sources.size(); ++i) {
        if (sources[i] == first + i) continue;
        // Along one cycle: what its first place held goes to the last.
        std::memcpy(held, static_cast<const void*>(&OfNumber(first + i)), sizeof(Record));
        std::uint32_t at = i;
        for (;;) {
            const std::uint32_t from = sources[at] - first;
            sources[at] = first + at;
            if (from == i) break;
            RelocateOne(&OfNumber(first + at), &OfNumber(first + from));
            at = from;
        }
        std::memcpy(static_cast<void*>(&OfNumber(first + at)), held, sizeof(Record));
    }
}

}  // namespace zorvane
