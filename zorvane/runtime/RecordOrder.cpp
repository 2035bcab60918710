#include "zorvane/runtime/RecordOrder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace zorvane {
namespace {

// What a fresh block holds: room for insertions before the first split.
constexpr std::uint32_t kFill = RecordOrder::kBlock * 3 / 4;

template <class T>
void Move(T* to, const T* from, std::uint32_t count) noexcept {
    if (count != 0) std::memmove(to, from, std::size_t{count} * sizeof(T));
}

// How many of the values, which never decrease, are below `limit`. By quarters: three values are
// read at once, and no branch depends on them.
std::uint32_t CountBelow(const std::uint64_t* values, std::uint32_t count,
                         std::uint64_t limit) noexcept {
    const std::uint64_t* base = values;
    const auto below = [&](std::uint32_t at) -> std::uint32_t { return base[at] < limit ? 1 : 0; };
    while (count >= 4) {
        const std::uint32_t quarter = count / 4;
        base += quarter * (below(quarter - 1) + below(2 * quarter - 1) + below(3 * quarter - 1));
        count -= 3 * quarter;
    }
    std::uint32_t passed = 0;
    for (std::uint32_t i = 0; i < count; ++i) passed += below(i);
    return static_cast<std::uint32_t>(base - values) + passed;
}

// Where a number stands among values that hold it once. Many are compared together, which the
// compiler makes wide, and give the place without a branch on it.
std::uint32_t PlaceOf(RecordNumber number, const RecordNumber* values,
                      std::uint32_t count) noexcept {
    constexpr std::uint32_t kStride = 32;
    std::uint32_t at = 0;
    for (; at + kStride <= count; at += kStride) {
        const RecordNumber* const stride = values + at;
        std::uint32_t place = 0;  // from 1; 0: not here
        for (std::size_t i = 0; i < kStride; ++i) {
            place |= stride[i] == number ? static_cast<std::uint32_t>(i) + 1 : 0;
        }
        if (place != 0) return at + place - 1;
    }
    while (values[at] != number) ++at;
    return at;
}

}  // namespace

void RecordOrder::SetRun(RecordNumber first, std::uint32_t count) noexcept {
    isRun_ = true;
    first_ = first;
    count_ = count;
    blocks_.clear();
    room_ = {};
    prefixRoom_ = {};
    starts_ = {};
    owners_ = {};
    DropPrefixes();
    ForgetNear();
}

// Makes blocks of `count` numbers.
template <class NumberAt>
void RecordOrder::Fill(std::uint32_t count, std::size_t places, NumberAt&& numberAt) {
    const std::uint32_t needed = std::max(1u, (count + kFill - 1) / kFill);
    std::vector<Block*> blocks;
    blocks.reserve(needed + 1);
    Slabs<Block> room;
    room.Prepare(needed);
    for (std::uint32_t from = 0; blocks.size() < needed; from += kFill) {
        Block* const block = room.Take();
        block->count = std::min(kFill, count - from);
        block->begin = (kBlock - block->count) / 2;
        for (std::uint32_t i = 0; i < block->count; ++i) block->Numbers()[i] = numberAt(from + i);
        blocks.push_back(block);
    }
    BlockStarts starts;
    starts.Assign(needed, kFill);
    LargeArray<Block*> owners(places);
    DropPrefixes();
    blocks_ = std::move(blocks);
    room_ = std::move(room);
    starts_ = std::move(starts);
    owners_ = std::move(owners);
    isRun_ = false;
    count_ = count;
    for (Block* block : blocks_) NoteOwner(*block);
    ForgetNear();
}

void RecordOrder::ToBlocks() {
    Fill(count_, std::bit_ceil(std::max(16u, count_ + 1)),
         [this](std::uint32_t i) { return first_ + i; });
}

void RecordOrder::SetBlocks(std::span<const RecordNumber> numbers, RecordNumber least,
                            std::uint32_t places) {
    Fill(static_cast<std::uint32_t>(numbers.size()), std::max(16u, places),
         [numbers](std::uint32_t i) { return numbers[i]; });
    first_ = least;
}

void RecordOrder::PrepareInsert(RecordNumber least, std::uint32_t places) {
    // Between two full blocks both are split.
    constexpr std::size_t kSplits = 2;
    const std::size_t blocks = blocks_.size() + kSplits;
    const auto makeRoom = [&](auto& values) {
        if (values.capacity() < blocks) values.reserve(2 * blocks);
    };
    makeRoom(blocks_);
    room_.Prepare(kSplits);
    if (HasPrefixes()) {
        prefixRoom_.Prepare(kSplits);
        makeRoom(firstPrefixes_);
    }
    starts_.Reserve(static_cast<std::uint32_t>(blocks));
    if (places > owners_.Size()) {
        owners_ = LargeArray<Block*>(places);
        for (Block* block : blocks_) NoteOwner(*block);
    }
    first_ = least;
}

// Puts the number at a place of block `from`, which stays, behind those in block `to`, or in the
// next where that one has enough; gives which. A block that was read before is filled as a fresh
// one is; in the one that is read what stays cannot overtake what is still to be read.
std::uint32_t RecordOrder::Keep(std::uint32_t from, std::uint32_t at, std::uint32_t to) noexcept {
    const Block& source = *blocks_[from];
    const Block* const last = blocks_[to];
    if (to != from && (last->count >= kFill || last->begin + last->count == kBlock)) {
        if (++to != from) blocks_[to]->begin = (kBlock - kFill) / 2;
    }
    Block& block = *blocks_[to];
    const std::uint32_t place = block.begin + block.count++;
    const RecordNumber number = source.numbers[at];
    block.numbers[place] = number;
    if (HasPrefixes()) block.prefixes->values[place] = source.prefixes->values[at];
    owners_[number & (owners_.Size() - 1)] = &block;
    return to;
}

// Lets go of all blocks but the first, and counts anew what those hold.
void RecordOrder::KeepBlocks(std::uint32_t count) noexcept {
    for (std::size_t i = count; i < blocks_.size(); ++i) {
        if (blocks_[i]->prefixes) prefixRoom_.Give(blocks_[i]->prefixes);
        room_.Give(blocks_[i]);
    }
    blocks_.resize(count);
    starts_.Assign(count, 0);
    if (HasPrefixes()) firstPrefixes_.resize(count);
    count_ = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Block& block = *blocks_[i];
        starts_.Set(i, count_);
        count_ += block.count;
        if (HasPrefixes()) firstPrefixes_[i] = block.count != 0 ? block.Prefixes()[0] : 0;
    }
    ForgetNear();
}

void RecordOrder::NoteOwner(Block& block) noexcept {
    const std::size_t mask = owners_.Size() - 1;
    for (std::uint32_t i = 0; i < block.count; ++i) owners_[block.Numbers()[i] & mask] = &block;
}

// The block that holds a position; the end belongs to the last. It is near then.
RecordOrder::Block& RecordOrder::FindBlock(std::uint32_t position) const noexcept {
    Block& near = *near_.Get();
    return position - near.from.Get() < near.count ? near : LookAt(starts_.BlockOf(position));
}

RecordOrder::Block& RecordOrder::LookAt(std::uint32_t ordinal) const noexcept {
    Block& block = *blocks_[ordinal];
    block.ordinal.Set(ordinal);
    block.from.Set(starts_.At(ordinal));
    near_.Set(&block);
    return block;
}

RecordNumber RecordOrder::Seek(std::uint32_t position) const noexcept {
    if (isRun_) return first_ + position;
    const Block& block = FindBlock(position);
    return block.Numbers()[position - block.from.Get()];
}

std::uint32_t RecordOrder::PositionOf(RecordNumber number) const noexcept {
    if (isRun_) return number - first_;
    const Block& block = *owners_[number & (owners_.Size() - 1)];
    if (near_.Get() != &block) LookAt(Locate(block));
    return block.from.Get() + PlaceOf(number, block.Numbers(), block.count);
}

// The index of a block. What is counted holds until blocks come or go, and is then counted anew
// when somebody asks: a list that only grows never does.
std::uint32_t RecordOrder::Locate(const Block& block) const noexcept {
    const std::uint32_t counted = block.ordinal.Get();
    if (counted < blocks_.size() && blocks_[counted] == &block) return counted;
    for (std::uint32_t i = 0; i < blocks_.size(); ++i) blocks_[i]->ordinal.Set(i);
    return block.ordinal.Get();
}

std::pair<std::uint32_t, std::uint32_t> RecordOrder::EqualPrefixes(
    std::uint64_t prefix) const noexcept {
    const auto size = static_cast<std::uint32_t>(blocks_.size());
    // The block in which prefixes that are not below the limit begin, and where in it.
    const auto firstFrom = [&](std::uint64_t limit) {
        const std::uint32_t begun = CountBelow(firstPrefixes_.data(), size, limit);
        const Block& block = LookAt(begun == 0 ? 0 : begun - 1);
        const std::uint32_t within =
            begun == 0 ? 0 : CountBelow(block.Prefixes(), block.count, limit);
        return std::pair<const Block&, std::uint32_t>(block, within);
    };
    const auto [block, within] = firstFrom(prefix);
    const std::uint32_t first = block.from.Get() + within;
    std::uint32_t past = within;
    while (past < block.count && block.Prefixes()[past] == prefix) ++past;
    // Most often that is all; else the equal ones go on in the blocks behind.
    const std::uint32_t next = block.ordinal.Get() + 1;
    const bool goesOn = past == block.count && next < size && firstPrefixes_[next] == prefix;
    if (!goesOn) return {first, block.from.Get() + past};
    if (prefix == UINT64_MAX) return {first, count_};
    const auto [last, end] = firstFrom(prefix + 1);
    return {first, last.from.Get() + end};
}

// Makes room in a full block: its rear half, or at the very end only a little, goes into a new one.
void RecordOrder::Split(std::uint32_t at) {
    blocks_.reserve(blocks_.size() + 1);
    room_.Prepare();
    if (HasPrefixes()) {
        prefixRoom_.Prepare();
        firstPrefixes_.reserve(firstPrefixes_.size() + 1);
    }
    starts_.Reserve(static_cast<std::uint32_t>(blocks_.size()) + 1);
    Block* const fresh = room_.Take();
    if (HasPrefixes()) fresh->prefixes = prefixRoom_.Take();
    Block& block = *blocks_[at];
    const bool last = at + 1 == blocks_.size();
    const auto behind = static_cast<std::ptrdiff_t>(at) + 1;
    const std::uint32_t keep = last ? kBlock - kBlock / 16 : kBlock / 2;
    fresh->count = block.count - keep;
    fresh->begin = last ? 0 : (kBlock - fresh->count) / 2;
    Move(fresh->Numbers(), block.Numbers() + keep, fresh->count);
    if (HasPrefixes()) {
        Move(fresh->Prefixes(), block.Prefixes() + keep, fresh->count);
        firstPrefixes_.insert(firstPrefixes_.begin() + behind, fresh->Prefixes()[0]);
    }
    block.count = keep;
    blocks_.insert(blocks_.begin() + behind, fresh);
    starts_.Insert(at + 1, starts_.At(at) + keep);
    NoteOwner(*fresh);
    ForgetNear();
}

void RecordOrder::Insert(std::uint32_t position, RecordNumber number, std::uint64_t prefix) {
    const std::uint32_t span = number - first_ + 1;
    if (span > owners_.Size()) {
        owners_ = LargeArray<Block*>(std::bit_ceil(span));
        for (Block* block : blocks_) NoteOwner(*block);
    }
    // What is to stand right behind the numbers near may as well join them.
    Block* place = near_.Get();
    if (place->count == 0 || position - place->from.Get() > place->count) {
        place = &FindBlock(position);
    }
    // Between two full blocks the place may next be found in the other.
    while (place->count == kBlock) {
        Split(place->ordinal.Get());
        place = &FindBlock(position);
    }
    Block& block = *place;
    const std::uint32_t at = block.ordinal.Get();
    const std::uint32_t within = position - block.from.Get();
    OpenGap(block, within);
    block.Numbers()[within] = number;
    if (HasPrefixes()) {
        block.Prefixes()[within] = prefix;
        firstPrefixes_[at] = block.Prefixes()[0];
    }
    owners_[number & (owners_.Size() - 1)] = &block;
    starts_.MoveBehind(at, 1);
    ++count_;
}

void RecordOrder::Erase(std::uint32_t position) noexcept {
    Block& block = FindBlock(position);
    const std::uint32_t at = block.ordinal.Get();
    CloseGap(block, position - block.from.Get());
    --count_;
    if (block.count != 0 || blocks_.size() == 1) {
        if (HasPrefixes()) firstPrefixes_[at] = block.count != 0 ? block.Prefixes()[0] : 0;
        starts_.MoveBehind(at, 0u - 1u);
    } else {
        const auto gone = static_cast<std::ptrdiff_t>(at);
        if (HasPrefixes()) firstPrefixes_.erase(firstPrefixes_.begin() + gone);
        blocks_.erase(blocks_.begin() + gone);
        if (block.prefixes) prefixRoom_.Give(block.prefixes);
        room_.Give(&block);
        starts_.MoveBehind(at, 0u - 1u);
        starts_.Erase(at);
        ForgetNear();
    }
}

// Makes room at `within` in a block that is not full: the shorter side moves, if it has room.
void RecordOrder::OpenGap(Block& block, std::uint32_t within) const noexcept {
    const std::uint32_t behind = block.count - within;
    const bool roomBehind = block.begin + block.count < kBlock;
    const bool forward = block.begin > 0 && (within < behind || !roomBehind);
    if (forward) --block.begin;
    const auto open = [&](auto* values) {
        if (forward) {
            Move(values, values + 1, within);
        } else {
            Move(values + within + 1, values + within, behind);
        }
    };
    open(block.Numbers());
    if (HasPrefixes()) open(block.Prefixes());
    ++block.count;
}

// Closes the place at `within`: the shorter side moves.
void RecordOrder::CloseGap(Block& block, std::uint32_t within) const noexcept {
    const std::uint32_t behind = block.count - within - 1;
    const bool backward = within < behind;
    const auto close = [&](auto* values) {
        if (backward) {
            Move(values + 1, values, within);
        } else {
            Move(values + within, values + within + 1, behind);
        }
    };
    close(block.Numbers());
    if (HasPrefixes()) close(block.Prefixes());
    if (backward) ++block.begin;
    --block.count;
}

}  // namespace zorvane
