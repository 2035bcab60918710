#include "tests/models/KeyedModel.h"
#include "tests/models/KeyedRun.h"
#include "zorvane/collection/ZVCollectionEx.h"

namespace zorvane {
namespace {

// The hashed collection told step by step: a plain vector of records and a real table of slots that
// is probed, re-hashed and re-seated as the steps say.
class CollectionModel : public KeyedModel {
  public:
    CollectionModel()
        : KeyedModel("ZVCollectionEx",
                     {"key", "itemstring", "itemlong", "item", "hashindex", "hashcode"},
                     "Itemstring") {
        Clear();
    }

    void reordered() override { rehash(capacity); }

    static std::int32_t hashOf(const Text& key) {
        const auto n = std::min(key.Length(), std::int32_t{128});
        const std::u16string_view units = key.Units();
        std::int32_t h =
            static_cast<std::int16_t>(static_cast<std::uint16_t>((n > 0 ? units[0] : 0) + 17));
        for (std::size_t i = 1; i < static_cast<std::size_t>(n); ++i) {
            h = static_cast<std::int32_t>((std::int64_t{h} * 2 + units[i]) & 0x3FFFFFFF);
        }
        return h;
    }

    bool findSlot(const Text& key, std::size_t& slot, std::int32_t& hash) {
        if (hash == 0) hash = hashOf(key);
        const auto n = static_cast<std::int64_t>(slots.size()) - 1;
        slot = static_cast<std::size_t>((hash % n + n) % n + 1);
        while (slots[slot] != 0) {
            const Row& row = at(slots[slot]);
            if (row.hashCode == hash && CompareTexts(row.key, key, CompareMode::Text) == 0)
                return true;
            if (++slot == slots.size()) slot = 1;
        }
        return false;
    }

    void rehash(std::int32_t n) {
        capacity = n;
        slots.assign(static_cast<std::size_t>(n) * 2 + 2, 0);
        for (std::int32_t i = 1; i <= count(); ++i) {
            std::size_t slot = 0;
            findSlot(at(i).key, slot, at(i).hashCode);
            at(i).hashIndex = static_cast<std::int32_t>(slot);
            slots[slot] = i;
        }
    }

    bool Exists(const Text& key, std::int32_t& index) override {
        std::size_t slot = 0;
        std::int32_t hash = 0;
        const bool found = findSlot(key, slot, hash);
        index = found ? slots[slot] : count() + 1;
        return found;
    }

    // By position, too; then the index stays.
    bool Exists(const Variant& v, std::int32_t& index) {
        return v.IsText() ? Exists(v.AsText(), index) : resolve(v) != 0;
    }

    bool BinaryExists(const Text& key, std::int32_t& index) { return halves(key, index, false); }

    Variant Add(const Variant& item, const Text& key, const AddOptions& options) {
        if (key.Empty()) return failAdd(28502, key, options.ReturnItem);
        if (count() == capacity) rehash(saturated(capacity, granularity, 1, 32768));
        std::size_t slot = 0;
        std::int32_t hash = 0;
        if (findSlot(key, slot, hash)) return failAdd(28501, key, options.ReturnItem);
        const bool inside = options.Position >= 1 && options.Position <= count() + 1;
        std::int32_t p = inside ? std::int32_t{options.Position} : count() + 1;
        if (sorted) {
            BinaryExists(key, p);
        } else if (const auto named = place(options)) {
            if (named->failure != 0) return failAdd(named->failure, key, options.ReturnItem);
            p = static_cast<std::int32_t>(named->position);
        }
        rows.insert(rows.begin() + (p - 1),
                    Row{item, 0, {}, key, hash, static_cast<std::int32_t>(slot)});
        renumber(p);
        changed = true;
        return options.ReturnItem ? item : Variant(p);
    }

    // Closes the gap: whoever is seated behind it, up to the next free slot, is seated again.
    void erased(std::int32_t position, const Row& row) override {
        auto j = static_cast<std::size_t>(row.hashIndex);
        slots[j] = 0;
        renumber(position);
        for (;;) {
            if (++j == slots.size()) j = 1;
            const std::int32_t r = slots[j];
            if (r == 0) break;
            slots[j] = 0;
            std::size_t s = 0;
            findSlot(at(r).key, s, at(r).hashCode);
            slots[s] = r;
            at(r).hashIndex = static_cast<std::int32_t>(s);
        }
    }

    void Clear() {
        empty(128);
        rehash(saturated(0, granularity, 1, 32768));
    }

    void SetGranularity(std::int32_t value) {
        granularity = std::clamp(value, 128, 32768);
        rehash(count() + granularity);
    }

    void copyFrom(const std::vector<std::vector<Variant>>& cells, bool mark) {
        Clear();
        takeSettings(cells[0]);
        for (std::size_t i = 1; i < cells.size(); ++i) {
            const auto& c = cells[i];
            rows.push_back(
                {c[2], c[3].ToLong(), c[4].ToText(), c[5].ToText(), c[0].ToLong(), c[1].ToLong()});
        }
        capacity = std::max(capacity, count());
        SortBy("key", true);
        if (mark) changed = true;
    }

  private:
    void renumber(std::int32_t from) {
        for (std::int32_t i = from; i <= count(); ++i)
            slots[static_cast<std::size_t>(at(i).hashIndex)] = i;
    }

    std::vector<std::int32_t> slots;  // from 1; 0 = free
};

class Run : public KeyedRun<ZVCollectionEx, CollectionModel> {
  public:
    using KeyedRun::KeyedRun;

  private:
    void OperateSpecially(const Variant& v, const Text& key) override {
        DoChosen(Below(2),
                 {Both(1, "Exists",
                       [&](auto& c) {
                           return FoundAt([&](std::int32_t& at) { return c.Exists(v, at); });
                       }),
                  Both(2, "BinaryExists", [&](auto& c) {
                      return FoundAt([&](std::int32_t& at) { return c.BinaryExists(key, at); });
                  })});
    }
    std::vector<Variant> ModelCells(std::int32_t position) override {
        const auto& row = model_.at(position);
        return {row.hashCode, row.hashIndex, row.item, row.itemLong, row.itemString, row.key};
    }
    std::vector<Variant> SourceRecord() override {
        // Keys that no other record of the source has: what a repeated one leads to is our own
        // choice.
        const Text key = Text("copied ") + Text(std::to_string(++copied_)) + SomeKey();
        const std::int32_t codes[] = {0, CollectionModel::hashOf(key), 1000, 2000};
        return {codes[Below(std::size(codes))],      std::int32_t{0}, SomeItem(),
                static_cast<std::int32_t>(Below(9)), SomeKey(),       key};
    }
    int copied_ = 0;
};

}  // namespace

std::unique_ptr<StepRun> StartZVCollection(std::uint32_t kind) {
    return std::make_unique<Run>(kind);
}

}  // namespace zorvane
