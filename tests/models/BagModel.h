#pragma once
// BagModel: a property bag as plain as can be: a vector, searched from its beginning.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/CaseMapping.h"
#include "platform/Error.h"
#include "platform/Variant.h"

namespace zorvane {

struct BagModel {
    struct Row {
        Text name;
        Variant value;
        Text objName;
    };

    std::vector<Row> rows;
    std::int32_t granularity = 16;
    bool sorted = true;
    bool unique = true;
    bool changed = false;

    [[nodiscard]] std::int32_t count() const { return static_cast<std::int32_t>(rows.size()); }
    [[nodiscard]] Row& at(std::int32_t position) {
        return rows[static_cast<std::size_t>(position) - 1];
    }
    // 0 when there is no such name, or names do not count.
    [[nodiscard]] std::int32_t find(const Text& name) {
        for (std::int32_t i = 1; sorted && i <= count(); ++i) {
            if (EqualTexts(at(i).name, name, CompareMode::Text)) return i;
        }
        return 0;
    }
    [[nodiscard]] std::int32_t resolve(const Variant& keyIndex) {
        if (keyIndex.IsText()) return find(keyIndex.AsText());
        if (keyIndex.Type() != VarType::Long && keyIndex.Type() != VarType::Integer) return 0;
        const std::int32_t position = keyIndex.ToLong();
        return position >= 1 && position <= count() ? position : 0;
    }
    [[nodiscard]] Row& entry(const Variant& keyIndex, const char* member, const char* label) {
        const std::int32_t position = resolve(keyIndex);
        if (position == 0) raise(28500, member, label, keyIndex);
        return at(position);
    }
    [[noreturn]] static void raise(std::int32_t code, const char* member, const char* label,
                                   const Variant& argument) {
        Text shown;
        IgnoringErrors([&] { shown = argument.ToText(); });
        throw Error(-2147221504 + code, Text("ZorvaneDemoProject.ZVPropertyBag::") + member,
                    Text(code == 28500 ? "There is no item with the vKeyIndex specified."
                                       : "There is already an item with this vKeyIndex.") +
                        label + shown);
    }

    // Behind all smaller names, and in front of equal ones.
    std::int32_t insertByName(Row row) {
        std::int32_t position = 1;
        while (position <= count() &&
               CompareTexts(at(position).name, row.name, CompareMode::Text) < 0) {
            ++position;
        }
        return insertAt(position, std::move(row));
    }
    std::int32_t insertAt(std::int32_t position, Row row) {
        if (position < 1 || position > count()) position = count() + 1;
        rows.insert(rows.begin() + (position - 1), std::move(row));
        changed = true;
        return position;
    }

    Variant add(const Variant& item, const Text& name, const std::optional<Variant>& before,
                const std::optional<Variant>& after, std::int32_t position, bool raising) {
        if (sorted) {
            if (unique && find(name) != 0) {
                if (raising) raise(28501, "Key", "Key = ", name);
                return std::int16_t{-28501};
            }
            return insertByName({name, item, {}});
        }
        if (before || after) {
            const Variant neighbour = before ? *before : *after;
            std::int64_t place = -5;  // a name leads nowhere: names do not count here
            if (neighbour.Type() == VarType::Long || neighbour.Type() == VarType::Integer) {
                place = std::int64_t{neighbour.ToLong()} + (before ? 0 : 1);
            }
            if (place < 1 || place > count() + 1) {
                if (raising) raise(28500, "Item", "KeyIndex = ", neighbour);
                return std::int16_t{-28500};
            }
            position = static_cast<std::int32_t>(place);
        }
        return insertAt(position, {name, item, {}});
    }

    // `words` and `objName` are what an object is stored as; for a plain value objName is "".
    void write(const Text& name, const Variant& value, const Variant& words, const Text& objName,
               bool equalsDefault, std::int32_t index) {
        if (index < 1 && !sorted) return;
        if (index >= 1) sorted = unique = false;
        const std::int32_t found = index < 1 ? find(name) : (index <= count() ? index : 0);
        if (!value.IsObject() && equalsDefault) {
            if (found != 0) removeAt(found);
            return;
        }
        if (found != 0) {
            at(found).value = words;
            at(found).objName = objName;
            changed = true;
        } else if (sorted) {
            insertByName({name, words, objName});
        } else {
            insertAt(index, {name, words, objName});
        }
    }

    void removeAt(std::int32_t position) {
        rows.erase(rows.begin() + (position - 1));
        changed = true;
    }

    // What a bag is after its words were read again: objects and Null are lost; and the settings,
    // too, when there are no entries.
    void reopen() {
        changed = false;
        for (Row& row : rows) {
            if (row.value.IsObject() || row.value.IsNull()) row.value = Variant();
        }
        if (rows.empty()) *this = BagModel();
    }
};

}  // namespace zorvane
