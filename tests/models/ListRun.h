#pragma once
// ListRun: any operations on a hand-written collection and on a plain list that is searched from
// its beginning.

#include <algorithm>

#include "tests/models/StepRun.h"

namespace zorvane {

template <class Collection>
class ListRun : public StepRun {
  protected:
    struct Row {
        Variant item;
        Variant key;  // Empty when there is none
    };
    using Place = typename std::vector<Row>::iterator;

    Object& Ours() override { return collection_; }
    [[nodiscard]] virtual bool StateIsOther() = 0;
    std::string StateDiffers(bool) override { return StateIsOther() ? "the state differs" : ""; }
    [[nodiscard]] virtual Text AnyKey() = 0;
    [[nodiscard]] virtual bool IsKey(const Text& own, const Text& key) const = 0;

    std::int32_t Below(std::int32_t n) {
        return static_cast<std::int32_t>(StepRun::Below(static_cast<unsigned>(n)));
    }
    Variant AnyIndex() {
        static const Variant kOdd[] = {{}, Variant::Null(), u"2", INT32_MAX, INT32_MIN, 1e10};
        const std::int32_t position = Below(Count() + 3) - 1;
        const std::int32_t chosen = Below(8);
        if (chosen == 0) return static_cast<std::int16_t>(position);
        if (chosen == 1) return Below(2 * Count() + 4) / 2.0;
        if (chosen == 2 && Below(8) == 0) return kOdd[Below(std::size(kOdd))];
        return chosen < 4 ? Variant(position) : AnyKey();
    }
    // What may be left out is Empty then.
    Variant Perhaps() { return Below(3) == 0 ? AnyIndex() : Variant(); }

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(rows_.size()); }
    Place Find(const Text& key) {
        return std::ranges::find_if(rows_, [&](const Row& row) {
            return row.key.IsText() && IsKey(row.key.AsText(), key);
        });
    }
    Place At(const Variant& v) {
        if (v.IsText()) {
            if (Find(v.AsText()) == rows_.end()) throw Error(5);
            return Find(v.AsText());
        }
        const std::int32_t position = v.ToLong();
        if (position < 1 || position > Count()) throw Error(9);
        return rows_.begin() + (position - 1);
    }
    // Where an entry goes that neither order nor a key in use decides.
    Place PlaceFor(const Variant& before, const Variant& after) {
        if (!before.IsEmpty() && !after.IsEmpty()) throw Error(5);
        if (!before.IsEmpty()) return At(before);
        return after.IsEmpty() ? rows_.end() : At(after) + 1;
    }

    Collection collection_;
    std::vector<Row> rows_;
};

}  // namespace zorvane
