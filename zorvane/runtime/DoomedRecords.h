#pragma once
// DoomedRecords: records that go together. Finding them may fail, as may making it possible;
// taking them out, in one pass, cannot. They end with this object.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "zorvane/runtime/KeyIndex.h"
#include "zorvane/runtime/RecordStore.h"

namespace zorvane {

template <class Record>
class DoomedRecords {
  public:
    // Those for which goes(record) holds, which is asked once of each, in order; hashOf(number) is
    // what the index has one under. O(n).
    template <class Goes, class HashOf>
    DoomedRecords(const RecordStore<Record>& records, Goes&& goes, HashOf&& hashOf)
        : doomed_(records.Places()) {
        for (std::int32_t position = 1; position <= records.Count(); ++position) {
            const RecordNumber number = records.NumberAt(position);
            if (!goes(records.OfNumber(number))) continue;
            found_.push_back({number, hashOf(number)});
            doomed_[PlaceOf(number)] = true;
        }
    }

    [[nodiscard]] std::size_t Count() const noexcept { return found_.size(); }
    // Calls visit(number) for each.
    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (const Found& one : found_) visit(one.number);
    }
    // Makes TakeOut possible. May throw, then nothing changed.
    void Prepare(RecordStore<Record>& records) {
        ended_.reserve(found_.size());
        records.PrepareCloseIf();
    }
    // Takes them out of the store and its index; others(isDoomed) of whatever else has their
    // numbers. O(n).
    template <class Others>
    void TakeOut(RecordStore<Record>& records, KeyIndex& index, Others&& others) noexcept {
        for (const Found& one : found_) {
            Record& record = records.OfNumber(one.number);
            ended_.push_back(std::move(record));
            std::destroy_at(&record);
            index.Erase(one.hash, one.number);
        }
        const auto isDoomed = [this](RecordNumber number) -> bool {
            return doomed_[PlaceOf(number)];
        };
        others(isDoomed);
        records.CloseIf(isDoomed);
    }

  private:
    struct Found {
        RecordNumber number;
        std::uint32_t hash;
    };

    // Numbers in use differ modulo the places of their store, a power of two.
    [[nodiscard]] std::size_t PlaceOf(RecordNumber number) const noexcept {
        return number & (doomed_.size() - 1);
    }

    std::vector<Found> found_;
    std::vector<bool> doomed_;
    std::vector<Record> ended_;
};

}  // namespace zorvane
