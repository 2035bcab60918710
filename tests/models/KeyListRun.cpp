#include "tests/models/KeyedModel.h"
#include "tests/models/KeyedRun.h"
#include "zorvane/keylist/KeyListEX.h"

namespace zorvane {
namespace {

// The key list told step by step on a plain vector, slow and literal.
class KeyListModel : public KeyedModel {
  public:
    KeyListModel() : KeyedModel("KeyListEX", {"key", "itemstring", "itemlong", "item"}) { Clear(); }

    Variant Add(const Variant& item, const Text& key, const AddOptions& options) {
        snapshot.reset();
        std::int32_t index = 0;
        if (Exists(key, index) && unique) return failAdd(28501, key, options.ReturnItem);
        if (!sorted) {
            if (index < 1 || index > count() + 1) index = count() + 1;
            if (const auto named = place(options)) {
                if (named->failure != 0) return failAdd(named->failure, key, options.ReturnItem);
                index = static_cast<std::int32_t>(named->position);
            }
        }
        rows.insert(rows.begin() + (index - 1), Row{item, 0, {}, key});
        if (capacity < count()) capacity = saturated(count(), granularity, 0, INT32_MAX);
        changed = true;
        return options.ReturnItem ? item : Variant(index);
    }

    void Clear() {
        empty(32);
        capacity = 2;
    }

    void copyFrom(const std::vector<std::vector<Variant>>& cells, bool mark) {
        Clear();
        takeSettings(cells[0]);
        for (std::size_t i = 1; i < cells.size(); ++i) {
            const auto& c = cells[i];
            rows.push_back({c[0], c[1].ToLong(), c[2].ToText(), c[3].ToText()});
        }
        if (count() > 0) capacity = count();
        SortBy("key", true);
        if (mark) changed = true;
    }

    bool Exists(const Text& key, std::int32_t& index) override {
        if (sorted) return halves(key, index, !unique);
        for (index = 1; index <= count(); ++index) {
            if (order(at(index).key, key) == 0) return true;
        }
        return false;
    }

    void erased(std::int32_t, const Row&) override {
        if (count() > 0 && count() < std::int64_t{capacity} - granularity) capacity = count();
    }

    void SetGranularity(std::int32_t value) { granularity = std::clamp(value, 16, 32768); }

    void SetKey(std::int32_t index, const Text& key) {
        static_cast<void>(find(index, "Key", "Index = "));
        std::int32_t found = 0;
        if (unique && Exists(key, found)) raise(28501, "Key", "Key = ", key);
        at(index).key = key;
        if (sorted) Sort();
    }

    const std::vector<Variant>& NewEnum() {
        if (snapshot) return *snapshot;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (rows[i].key == rows[j].key) throw Error(PlatformError::DuplicateKey);
            }
        }
        snapshot.emplace();
        for (const Row& row : rows) snapshot->push_back(row.item);
        return *snapshot;
    }
};

class Run : public KeyedRun<KeyListEX, KeyListModel> {
  public:
    using KeyedRun::KeyedRun;

  private:
    void OperateSpecially(const Variant&, const Text& key) override {
        const std::int32_t position = SomePosition();
        const auto all = [&](auto& c) { return OutcomeOf([&] { return Joined(c.NewEnum()); }); };
        const auto repeat = [&](auto& c) {
            c.SetUnique(false);
            c.SetKey(1, c.Key(2));
            const std::string before = all(c);
            return c.Clear(), before;
        };
        if (Chance(1)) return BothAtOnce("a key set twice", container_, model_, repeat);
        if (Chance(1)) {
            static_cast<void>(all(container_) + all(model_));
            EraseSome();
            return BothAtOnce("NewEnum before and behind", container_, model_, all);
        }
        const unsigned chosen = Below(3);
        if (chosen == 2 && model_.count() > 500) return;
        DoChosen(chosen,
                 {Both(1, "Exists",
                       [&](auto& c) {
                           return FoundAt([&](std::int32_t& at) { return c.Exists(key, at); });
                       }),
                  Both(2, "SetKey", [&](auto& c) { c.SetKey(position, key); }),
                  Both(3, "NewEnum", [&](auto& c) { return Joined(c.NewEnum()); })});
    }
    std::vector<Variant> ModelCells(std::int32_t position) override {
        const auto& row = model_.at(position);
        return {row.item, row.itemLong, row.itemString, row.key};
    }
    std::vector<Variant> SourceRecord() override {
        return {SomeItem(), static_cast<std::int32_t>(Below(9)), SomeKey(), SomeKey()};
    }
};

}  // namespace

std::unique_ptr<StepRun> StartKeyList(std::uint32_t kind) {
    return std::make_unique<Run>(kind);
}

}  // namespace zorvane
