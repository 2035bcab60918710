#pragma once
// FetchAhead: brings near what the removal of the next entries will touch.

#include <cstdint>

#include "zorvane/runtime/KeyIndex.h"
#include "zorvane/runtime/RecordStore.h"

namespace zorvane {

// Whoever removes by position mostly goes on there: at the first, or through all. A removal reads a
// record, then its key, then its place in the index, each far away and known only from the one
// before. So each call fetches one of them for each of three entries behind `position`, from what
// earlier calls fetched, a few of them ago: in a large container the way to each is longer than one
// removal. Changes nothing.
template <class Record>
void FetchAhead(const RecordStore<Record>& records, const KeyIndex& index,
                std::int32_t position) noexcept {
    constexpr std::int32_t kPlaceAhead = 4;
    constexpr std::int32_t kKeyAhead = 8;
    constexpr std::int32_t kRecordAhead = 12;
    if (records.Count() - position < kRecordAhead) return;
    index.Fetch(records.At(position + kPlaceAhead).Key.FoldedHash());
    records.At(position + kKeyAhead).Key.Fetch();
    __builtin_prefetch(&records.At(position + kRecordAhead), 1);
}

}  // namespace zorvane
