#pragma once
// BagModel: a property bag as plain as can be: a vector, searched from its beginning.

#include "tests/models/KeyedModel.h"

namespace zorvane {

// A row's key is the property's name, its itemString the name of its object's class.
class BagModel : public KeyedModel {
  public:
    BagModel() : KeyedModel("ZVPropertyBag") { granularity = 16; }

    // Names count only while the bag is sorted by them.
    bool Exists(const Text& name, std::int32_t& index) override {
        for (index = 1; sorted && index <= count(); ++index) {
            if (EqualTexts(at(index).key, name, CompareMode::Text)) return true;
        }
        return false;
    }

    // Behind all smaller names, and in front of equal ones.
    Variant insertByName(const Row& row) {
        std::int32_t position = 1;
        while (position <= count() &&
               CompareTexts(at(position).key, row.key, CompareMode::Text) < 0) {
            ++position;
        }
        return insertAt(position, row);
    }
    Variant insertAt(std::int32_t position, const Row& row) {
        if (position < 1 || position > count()) position = count() + 1;
        rows.insert(rows.begin() + (position - 1), row);
        changed = true;
        return position;
    }

    Variant Add(const Variant& item, const Text& name, const AddOptions& options) {
        if (sorted && unique && resolve(name) != 0) {
            if (options.ReturnItem) raise(28501, "Key", "Key = ", name);
            return std::int16_t{-28501};
        }
        if (sorted) return insertByName({.item = item, .key = name});
        const auto named = place(options);
        if (named && named->failure != 0) {
            const auto& neighbour = options.Before ? *options.Before : *options.After;
            if (options.ReturnItem) raise(28500, "Item", "KeyIndex = ", neighbour);
            return std::int16_t{-28500};
        }
        return insertAt(
            named ? static_cast<std::int32_t>(named->position) : std::int32_t{options.Position},
            {.item = item, .key = name});
    }

    // `words` and `objName` are what an object is stored as; for a plain value objName is "".
    void write(const Text& name, const Variant& value, const Variant& words, const Text& objName,
               bool equalsDefault, std::int32_t index) {
        if (index < 1 && !sorted) return;
        if (index >= 1) sorted = unique = false;
        const std::int32_t found = resolve(index < 1 ? Variant(name) : Variant(index));
        if (!value.IsObject() && equalsDefault) {
            if (found != 0) Remove(found);
        } else if (found != 0) {
            at(found).item = words;
            at(found).itemString = objName;
            changed = true;
        } else {
            const Row row{.item = words, .itemString = objName, .key = name};
            sorted ? insertByName(row) : insertAt(index, row);
        }
    }

    // What a bag is after its words were read again: objects and Null are lost; and the settings,
    // too, when there are no entries.
    void reopen() {
        changed = false;
        for (Row& row : rows) {
            if (row.item.IsObject() || row.item.IsNull()) row.item = Variant();
        }
        if (rows.empty()) *this = BagModel();
    }
};

}  // namespace zorvane
