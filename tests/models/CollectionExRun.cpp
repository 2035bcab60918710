#include <cmath>

#include "tests/models/ListRun.h"
#include "zorvane/collection/CollectionEx.h"
#include "zorvane/platform/CaseMapping.h"

namespace zorvane {
namespace {

// The steps of each member, told on a list whose keys are in lower case.
class Run : public ListRun<CollectionEx> {
    void Operate() override {
        const Text key = AnyKey();
        const Variant item = Below(3) == 0 ? Variant(key) : Variant(Number());
        const Variant v = AnyIndex(), before = Perhaps(), after = Perhaps();
        const bool flag = Below(2) == 0, replace = Below(4) == 0;
        const std::int32_t position = Below(Count() + 3) - 1;
        const std::int32_t size = Below(60), step = 15 + Below(10);
        const float ratios[] = {static_cast<float>(Below(12)) / 4, NAN, 1e30F};
        const float ratio = ratios[Below(8) == 0 ? 1 + Below(2) : 0];
        const Arguments toAdd{item, key, before, after, replace};
        DoChosen(
            static_cast<unsigned>(Below(100)),
            {{flag ? 1u : 0u, "Clear", {}, [&] { Clear(); }},
             {2, "SetMemory", {size, step, ratio}, [&] { SetMemory(size, step, ratio); }},
             {10, "NewEnum", [&] { return Joined(collection_.NewEnum()); },
              [&] { return Joined(Snapshot()); }},
             {11, "Sorted", [&] { collection_.Set(u"sorted", flag); }, [&] { SetSorted(flag); }},
             {12, "move",
              [&] {
                  CollectionEx other = std::move(collection_);
                  const std::int32_t slots = other.TableSize();
                  collection_ = std::move(other);
                  return slots;
              },
              [&] { return Slots(); }},
             {50, "Add", toAdd, [&] { Add(item, key, before, after, replace); }},
             {70, "Remove", {v, flag}, [&] { Remove(v, flag); }},
             {72, "erase_if",
              [=, this] {
                  return erase_if(collection_, [=](const CollectionExEntry& entry) {
                      return entry.Key.Length() % 5 == position % 5;
                  });
              },
              [=, this] {
                  return std::erase_if(rows_, [=](const Row& row) {
                      return row.key.AsText().Length() % 5 == position % 5;
                  });
              }},
             {76, "Item", {v}, [&] { return At(v)->item; }},
             {80, "Item",
              [=, this] {
                  return InSomeForm(v, flag ? 1 : 2, [&](const auto& named) {
                      return collection_.FindItem(named) ? *collection_.FindItem(named)
                                                         : collection_.Item(named);
                  });
              },
              [=, this] {
                  if (v.Type() == VarType::Decimal) throw Error(9);
                  return At(v)->item;
              }},
             {90, "Key", {position}, [&] { return At(position)->key; }},
             {95, "Index", {key}, [&] { return Index(key); }},
             {100, "Exists", {v}, [&] {
                  if (v.IsText()) return Find(v.AsText()) != rows_.end();
                  return v.ToDouble() >= 1 && v.ToDouble() <= Count();
              }}});
    }
    Text AnyKey() override {
        // Few keys, so that they meet again; in both cases, with one hash, of one unit, long, and
        // such as only folding joins.
        const auto i = static_cast<char16_t>(Below(12));
        const auto unit = [](auto value) { return static_cast<char16_t>(value); };
        const std::int32_t chosen = Below(8);
        if (chosen == 7) return CrowdedKey(static_cast<unsigned>(Below(40)));
        if (chosen == 0) return std::u16string{unit((Below(2) ? u'A' : u'a') + i)};
        if (chosen == 1) return std::u16string{unit(0x4E00 + i), unit(0x5000 - 2 * i)};
        if (chosen == 2) return std::u16string{unit(0x7FE8 + i)};
        if (chosen == 3) return std::u16string(Below(8) == 0 ? 5000 : 256, u'K') + i;
        if (chosen == 4)
            return Below(12) == 0 ? Text() : Text(u"String") + Variant(Below(40)).ToText();
        if (chosen == 5) return std::u16string{u"\u03A3\u03C2\u03C3"[Below(3)]};
        return std::u16string{u'\xD801', unit(0xDC00 + i + 40 * Below(2))};
    }
    bool IsKey(const Text& own, const Text& key) const override { return own == LowerCase(key); }

    std::int32_t Index(const Text& key) {
        const auto found = static_cast<std::int32_t>(Find(key) - rows_.begin());
        return found == Count() ? -1 : found + 1;
    }
    void Add(const Variant& item, const Text& key, const Variant& before, const Variant& after,
             bool replace) {
        if (const Place present = Find(key); present != rows_.end()) {
            if (!replace) throw Error(457);
            present->item = item;
        } else {
            if (Count() == capacity_) capacity_ += growStep_;
            const Row row{item, LowerCase(key)};
            rows_.insert(
                sorted_ ? std::ranges::lower_bound(rows_, row, Before) : PlaceFor(before, after),
                row);
        }
        snapshot_.reset();
    }
    void Remove(const Variant& v, bool quiet) {
        try {
            rows_.erase(At(v));
        } catch (const Error& error) {
            const bool missing = error.Number == 5 || error.Number == 9;
            if (!quiet || !missing) throw;
        }
    }
    void SetMemory(std::int32_t size, std::int32_t step, float slots) {
        initialSize_ = std::max(size, 20);
        ratio_ = slots >= 1.5F ? slots : 1.5;
        growStep_ = step < 20 ? initialSize_ : step;
        if (rows_.empty()) Clear();
        capacity_ = std::max(initialSize_, Count());
    }
    void Clear() {
        rows_.clear();
        capacity_ = initialSize_;
        snapshot_.reset();
    }
    void SetSorted(bool value) {
        if (value && !sorted_) std::ranges::sort(rows_, Before);
        sorted_ = value;
    }
    static bool Before(const Row& a, const Row& b) {
        return a.key.AsText().Units() < b.key.AsText().Units();
    }

    const std::vector<Variant>& Snapshot() {
        if (!snapshot_) {
            snapshot_.emplace();
            for (const Row& row : rows_) snapshot_->push_back(row.item);
        }
        return *snapshot_;
    }

    std::int32_t Slots() const {
        const double planned = std::min(std::nearbyint(ratio_ * capacity_), 2147483647.0);
        return static_cast<std::int32_t>(planned) | 1;
    }
    bool StateIsOther() override {
        if (collection_.Get(u"Count") != Variant(Count()) ||
            collection_.Get(u"Sorted") != Variant(sorted_) || collection_.Capacity() != capacity_ ||
            collection_.TableSize() != Slots()) {
            return true;
        }
        const auto isSame = [](const CollectionExEntry& entry, const Row& row) {
            return entry.Item == row.item && entry.Key == row.key.AsText();
        };
        for (std::int32_t i = 1; i <= Count(); ++i) {
            if (!isSame({collection_.Key(i), collection_.Item(i)}, *At(i))) return true;
        }
        return !std::ranges::equal(collection_.Entries(), rows_, isSame);
    }

    // More room may be planned before memory runs out.
    std::string FailedStateDiffers() override {
        const std::int32_t planned = std::exchange(capacity_, collection_.Capacity());
        std::string differs = StateDiffers(true);
        capacity_ = planned;
        return differs;
    }

    std::int32_t capacity_ = 1000, initialSize_ = 1000, growStep_ = 1000;
    double ratio_ = 2;
    bool sorted_ = false;
    std::optional<std::vector<Variant>> snapshot_;
};

}  // namespace

std::unique_ptr<StepRun> StartCollectionEx(std::uint32_t) {
    return std::make_unique<Run>();
}

}  // namespace zorvane
