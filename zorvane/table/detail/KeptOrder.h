#pragma once
// KeptOrder: an order that a table keeps, without what its columns are.
//
// A change of one record goes in three steps: Seek and then Prepare for every order, which may fail
// and change nothing, and then Insert, Move or Remove, which cannot. Detached from its table it is
// empty.

#include <cstddef>
#include <cstdint>

#include "zorvane/runtime/RecordOrder.h"
#include "zorvane/runtime/RecordStore.h"
#include "zorvane/table/detail/ColumnList.h"

namespace zorvane::detail {

template <class Table>
class KeptOrder {
  public:
    using Record = typename Table::value_type;

    virtual ~KeptOrder() = default;
    KeptOrder(const KeptOrder&) = delete;
    KeptOrder& operator=(const KeptOrder&) = delete;

    // Names the type of the whole.
    [[nodiscard]] const void* Tag() const noexcept { return tag_; }
    [[nodiscard]] const RecordOrder& Numbers() const noexcept { return numbers_; }
    // Null when detached.
    [[nodiscard]] const Table* Owner() const noexcept { return owner_; }
    [[nodiscard]] const RecordStore<Record>* Records() const noexcept { return records_; }
    void Attach(const Table* owner, const RecordStore<Record>* records) noexcept {
        owner_ = owner;
        records_ = records;
    }
    void Detach() noexcept {
        Attach(nullptr, nullptr);
        numbers_.SetRun(0, 0);
    }

    // Whether a change of this data member may move a record.
    [[nodiscard]] virtual bool LooksAt(MemberName member) const noexcept = 0;
    [[nodiscard]] virtual bool Ties(const Record& left, const Record& right) const = 0;

    // Behind Seek, which may lay out anew what this makes room in.
    void Prepare() { numbers_.PrepareInsert(records_->LeastNumber(), records_->Places()); }
    // Finds the place of a record that is to come.
    virtual void Seek(const Record& record) = 0;
    // Finds the place that the record of a number is to have when it is this one; what lies under
    // the number now is not looked at.
    virtual void SeekFor(RecordNumber own, const Record& record) = 0;

    void Insert(RecordNumber number) noexcept { numbers_.Insert(place_, number, prefix_); }
    void Move(RecordNumber number) noexcept {
        Remove(number);
        Insert(number);
    }
    void Remove(RecordNumber number) noexcept { numbers_.Erase(numbers_.PositionOf(number)); }
    template <class Doomed>
    void RemoveIf(Doomed&& doomed) noexcept {
        numbers_.EraseIf(doomed);
    }
    void RemoveAll() noexcept {
        numbers_.EraseIf([](RecordNumber) { return true; });
    }

    // Noted for a change: whether this order takes part.
    void Join(bool joins) noexcept { joins_ = joins; }
    [[nodiscard]] bool Joins() const noexcept { return joins_; }

  protected:
    explicit KeptOrder(const void* tag) noexcept : tag_(tag) {}

    RecordOrder numbers_;  // in blocks, unless detached
    std::uint32_t place_ = 0;
    std::uint64_t prefix_ = 0;

  private:
    const void* tag_;
    bool joins_ = false;
    const Table* owner_ = nullptr;
    const RecordStore<Record>* records_ = nullptr;
};

}  // namespace zorvane::detail
