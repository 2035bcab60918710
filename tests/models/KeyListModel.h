#pragma once
// KeyListModel: the key list told step by step on a plain vector, slow and literal.

#include "tests/models/KeyedModel.h"

namespace zorvane {

class KeyListModel : public KeyedModel {
  public:
    static constexpr const char* kItemString = "ItemString";
    std::int32_t upper = 2;
    std::optional<std::vector<Variant>> snapshot;

    KeyListModel() : KeyedModel("KeyListEX") { granularity = 32; }

    bool isColumn(Column wanted) const override {
        return wanted != Column::HashIndex && wanted != Column::HashCode;
    }

    Variant add(const Variant& item, const Text& key, const std::optional<Variant>& before,
                const std::optional<Variant>& after, std::int32_t, bool returnItem) {
        snapshot.reset();
        std::int32_t index = 0;
        if (exists(key, index) && unique) return failAdd(28501, key, returnItem);
        if (!sorted) {
            if (index < 1 || index > count() + 1) index = count() + 1;
            if (const auto named = place(before, after)) {
                if (named->failure != 0) return failAdd(named->failure, key, returnItem);
                index = static_cast<std::int32_t>(named->position);
            }
        }
        rows.insert(rows.begin() + (index - 1), Row{item, 0, {}, key});
        if (upper < count()) upper = count() + granularity;
        changed = true;
        return returnItem ? item : Variant(index);
    }

    void clear() {
        rows.clear();
        changed = descending = false;
        snapshot.reset();
        compare = 0;
        granularity = std::max(granularity, 32);
        upper = 2;
        sorted = unique = true;
        column = Column::Key;
    }

    void copyFrom(const std::vector<std::vector<Variant>>& cells, std::int32_t n, bool mark) {
        clear();
        takeSettings(cells[0]);
        for (std::int32_t i = 1; i <= n; ++i) {
            const auto& c = cells[static_cast<std::size_t>(i)];
            rows.push_back({c[0], c[1].ToLong(), c[2].ToText(), c[3].ToText()});
        }
        if (n > 0) upper = n;
        sortBy("key", true);
        if (mark) changed = true;
    }

    bool exists(const Text& key, std::int32_t& index) override {
        if (sorted) {
            keyOrderForSearch();
            return halves(key, index, !unique);
        }
        for (index = 1; index <= count(); ++index) {
            if (order(at(index).key, key) == 0) return true;
        }
        return false;
    }

    void setGranularity(std::int32_t value) { granularity = std::clamp(value, 16, 32768); }

    Variant remove(const Variant& v, bool returnItem) {
        snapshot.reset();
        const std::int32_t index = resolve(v);
        if (index == 0) {
            if (!returnItem) return std::int16_t{0};
            raise(28500, "Remove", "There is no item with the vKeyIndex specified.Key = ", v);
        }
        const Variant item = at(index).item;
        rows.erase(rows.begin() + (index - 1));
        if (count() > 0 && count() < upper - granularity) upper = count();
        changed = true;
        return returnItem ? item : Variant(index);
    }

    void setKey(std::int32_t index, const Text& key) {
        if (index < 1 || index > count()) {
            raise(28500, "Key", "There is no item with the vKeyIndex specified.Index = ", index);
        }
        std::int32_t found = 0;
        if (unique && exists(key, found)) {
            raise(28501, "Key", "There is already an item with this vKeyIndex.Key = ", key);
        }
        at(index).key = key;
        if (sorted) sort();
    }

    const std::vector<Variant>& enumerate() {
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

}  // namespace zorvane
