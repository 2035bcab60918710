#include <cmath>

#include "keylist/CollectionEx.h"
#include "platform/CaseMapping.h"
#include "tests/models/ListRun.h"

namespace zorvane {
namespace {

// The steps of each member, told on a list whose keys are in lower case.
class Run : public ListRun<CollectionEx> {
    void Operate() override {
        const Text key = Drawn(AnyKey());
        const Variant v = Drawn(AnyIndex());
        const std::int32_t kind = Below(100);
        const bool flag = Below(2) == 0;
        const std::int32_t position = Below(Count() + 3) - 1;
        if (kind == 1) {
            const std::int32_t size = Below(60), step = 15 + Below(10);
            const auto ratio = static_cast<float>(Below(12)) / 4;
            return Do(
                "SetMemory", [&] { collection_.SetMemory(size, step, ratio); },
                [&] { SetMemory(size, step, ratio); });
        }
        if (kind >= 4 && kind < 45) {
            const CollectionExAdd options{Perhaps(), Perhaps(), Below(4) == 0};
            return Do(
                "Add", [&] { collection_.Add(Number(), key, options); },
                [&] { Add(key, options); });
        }
        DoChosen(static_cast<unsigned>(kind),
                 {{flag ? 1u : 0u, "Clear", [&] { collection_.Clear(); }, [&] { Clear(); }},
                  {3, "NewEnum",
                   [&] {
                       const Enumerator items = collection_.NewEnum();
                       return items.end() - items.begin();
                   },
                   [&] { return Snapshot().size(); }},
                  {4, "Sorted", [&] { collection_.SetSorted(flag); }, [&] { SetSorted(flag); }},
                  {70, "Remove", [&] { collection_.Remove(v, flag); }, [&] { Remove(v, flag); }},
                  {80, "Item", [&] { return collection_.Item(v); }, [&] { return At(v)->item; }},
                  {90, "Key", [&] { return collection_.Key(position); },
                   [&] { return *At(position)->key; }},
                  {100, "Exists", [&] { return collection_.Exists(v); },
                   [&] {
                       if (v.IsText()) return Find(v.AsText()) != rows_.end();
                       return v.ToDouble() >= 1 && v.ToDouble() <= Count();
                   }}});
    }
    Text AnyKey() override {
        // Few keys, so that they meet again; in both cases, with one hash, of one unit, long, and
        // such as only folding joins.
        const auto i = static_cast<char16_t>(Below(12));
        const auto unit = [](auto value) { return static_cast<char16_t>(value); };
        const std::int32_t chosen = Below(7);
        if (chosen == 0) return std::u16string{unit((Below(2) ? u'A' : u'a') + i)};
        if (chosen == 1) return std::u16string{unit(0x4E00 + i), unit(0x5000 - 2 * i)};
        if (chosen == 2) return std::u16string{unit(0x7FE8 + i)};
        if (chosen == 3) return std::u16string(256, u'K') + i;
        if (chosen == 4)
            return Below(12) == 0 ? Text() : Text(u"String") + Variant(Below(40)).ToText();
        if (chosen == 5) return std::u16string{u"\u03A3\u03C2\u03C3"[Below(3)]};
        return std::u16string{u'\xD801', unit(0xDC00 + i + 40 * Below(2))};
    }
    bool IsKey(const Row& row, const Text& key) const override {
        return *row.key == LowerCase(key);
    }

    void Add(const Text& key, const CollectionExAdd& options) {
        if (const Place present = Find(key); present != rows_.end()) {
            if (!options.Replace) throw Error(457);
            present->item = Number();
        } else {
            if (Count() == capacity_) capacity_ += growStep_;
            const Row row{Number(), LowerCase(key)};
            rows_.insert(sorted_ ? std::ranges::lower_bound(rows_, row, Before) : PlaceFor(options),
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
        ratio_ = std::max(static_cast<double>(slots), 1.5);
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
    static bool Before(const Row& a, const Row& b) { return a.key->Units() < b.key->Units(); }

    const std::vector<Variant>& Snapshot() {
        if (!snapshot_) {
            snapshot_.emplace();
            for (const Row& row : rows_) snapshot_->push_back(row.item);
        }
        return *snapshot_;
    }

    bool StateIsOther() override {
        const auto slots = static_cast<std::int32_t>(std::nearbyint(ratio_ * capacity_)) | 1;
        if (collection_.Count() != Count() || collection_.Sorted() != sorted_ ||
            collection_.Capacity() != capacity_ || collection_.TableSize() != slots) {
            return true;
        }
        std::vector<Variant> items;
        for (const Row& row : rows_) {
            items.push_back(row.item);
            if (collection_.Key(static_cast<std::int32_t>(items.size())) != *row.key ||
                collection_.Index(*row.key) != static_cast<std::int32_t>(items.size())) {
                return true;
            }
        }
        if (!std::ranges::equal(collection_, items)) return true;
        if (Below(4) != 0) return false;
        return !std::ranges::equal(collection_.NewEnum(), Snapshot());
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
