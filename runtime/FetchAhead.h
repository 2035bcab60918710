#pragma once
// FetchAhead: brings near what the removal of the next entries will touch.

#include <cstdint>

#include "runtime/KeyIndex.h"
#include "runtime/RecordStore.h"

namespace zorvane {

// Whoever removes by position mostly goes on there: at the first, or through all. A removal reads a
// record, then its key, then its place in the index, each far away and known only from the one
// before. So each call fetches one of them for each of the three entries behind `position`, from
// what the calls before it fetched. Changes nothing.
template <class Record>
void FetchAhead(const RecordStore<Record>& records, const KeyIndex& index,
                std::int32_t position) noexcept {
    if (records.Count() - position < 4) return;
    index.Fetch(records.At(position + 1).Key.FoldedHash());
    records.At(position + 2).Key.Fetch();
    __builtin_prefetch(&records.At(position + 4), 1);
}

}  // namespace zorvane
