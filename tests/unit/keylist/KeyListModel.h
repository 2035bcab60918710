#pragma once
// KeyListModel: the key list told step by step on a plain vector, slow and literal.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/CaseMapping.h"
#include "platform/Error.h"
#include "platform/Variant.h"
#include "tests/support/LiteralSort.h"
#include "tests/support/ScriptedSource.h"

namespace zorvane {

class KeyListModel {
  public:
    struct Row {
        Variant item;
        std::int32_t itemLong = 0;
        Text itemString;
        Text key;
    };
    enum class Column { None, Key, ItemString, ItemLong, Item };

    std::vector<Row> rows;
    bool changed = false, descending = false, sorted = true, unique = true;
    std::int32_t compare = 0, granularity = 32, upper = 2;
    Column column = Column::Key;
    std::optional<std::vector<Variant>> snapshot;

    std::int32_t count() const { return static_cast<std::int32_t>(rows.size()); }
    Row& at(std::int32_t position) { return rows[static_cast<std::size_t>(position) - 1]; }

    Variant add(const Variant& item, const Text& key, const std::optional<Variant>& before,
                const std::optional<Variant>& after, bool returnItem) {
        snapshot.reset();
        std::int32_t index = 0;
        const auto fail = [&](int number, int code, const char* message) -> Variant {
            if (returnItem) raise(number, "Add", std::string(message) + "Key = ", key);
            return static_cast<std::int16_t>(code);
        };
        if (exists(key, index) && unique) {
            return fail(28501, -28501, "There is already an item with this vKeyIndex.");
        }
        if (!sorted) {
            index = index < 1 || index > count() + 1 ? count() + 1 : index;
            const std::optional<Variant>& given = before ? before : after;
            if (given) {
                std::int64_t place = 0;
                if (given->IsText()) {
                    std::int32_t named = 0;
                    if (!exists(given->AsText(), named)) {
                        return fail(28503, -28503, "Bad Before/After Value in call to Add");
                    }
                    place = named;
                } else if (given->Type() == VarType::Long || given->Type() == VarType::Integer) {
                    place = given->ToLong();
                } else {
                    return fail(28503, -28503, "Bad Before/After Value in call to Add");
                }
                if (!before) ++place;
                if (place < 1 || place > count() + 1) return fail(28502, -28500, "Unknown error");
                index = static_cast<std::int32_t>(place);
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
        changed = cells[0][0].ToBoolean();
        compare = cells[0][1].ToLong();
        descending = cells[0][2].ToBoolean();
        granularity = cells[0][3].ToLong();
        sorted = cells[0][4].ToBoolean();
        unique = cells[0][5].ToBoolean();
        for (std::int32_t i = 1; i <= n; ++i) {
            const auto& c = cells[static_cast<std::size_t>(i)];
            rows.push_back({c[0], c[1].ToLong(), c[2].ToText(), c[3].ToText()});
        }
        if (n > 0) upper = n;
        sortBy("key", true);
        if (mark) changed = true;
    }

    bool exists(const Text& key, std::int32_t& index) {
        if (!sorted) {
            index = count() + 1;
            for (std::int32_t i = 1; i <= count(); ++i) {
                if (order(at(i).key, key) == 0) {
                    index = i;
                    return true;
                }
            }
            return false;
        }
        if (column != Column::Key && column != Column::ItemString) sortBy("key", true);
        std::int32_t low = 1;
        std::int32_t high = count();
        while (low <= high) {
            const auto middle = static_cast<std::int32_t>(std::nearbyint((low + high) / 2.0));
            const int c = order(at(middle).key, key);
            if (c == 0) {
                index = middle;
                while (!unique && index > 1 && order(at(index - 1).key, key) == 0) --index;
                return true;
            }
            ((c > 0) != descending ? high : low) = (c > 0) != descending ? middle - 1 : middle + 1;
        }
        index = low;
        return false;
    }

    // The position that a key or position names, or 0.
    std::int32_t resolve(const Variant& v) {
        if (rows.empty()) return 0;
        std::int32_t index = 0;
        if (v.IsText()) return exists(v.AsText(), index) ? index : 0;
        if (v.Type() != VarType::Long && v.Type() != VarType::Integer) return 0;
        index = v.ToLong();
        return index >= 1 && index <= count() ? index : 0;
    }

    Row& find(const Variant& v, const char* member) {
        const std::int32_t index = resolve(v);
        if (index == 0) {
            raise(28500, member, "There is no item with the vKeyIndex specified.KeyIndex = ", v);
        }
        return at(index);
    }

    Variant remove(const Variant& v, bool returnItem) {
        snapshot.reset();
        const std::int32_t index = resolve(v);
        if (index == 0) {
            if (returnItem) {
                raise(28500, "Remove", "There is no item with the vKeyIndex specified.Key = ", v);
            }
            return std::int16_t{0};
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

    bool sort() {
        if (rows.empty() || column == Column::None) return false;
        if (column == Column::Item && count() > 1) {
            for (const Row& row : rows) static_cast<void>(row.item.ToText());
        }
        LiteralSort(rows, descending, [&](const Row& a, const Row& b) {
            switch (column) {
                case Column::ItemString:
                    return order(a.itemString, b.itemString);
                case Column::ItemLong:
                    return (a.itemLong > b.itemLong) - (a.itemLong < b.itemLong);
                case Column::Item:
                    return order(a.item.ToText(), b.item.ToText());
                default:
                    return order(a.key, b.key);
            }
        });
        return true;
    }

    bool sortBy(std::string name, bool now) {
        std::ranges::transform(name, name.begin(),
                               [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
        column = name == "key"          ? Column::Key
                 : name == "itemstring" ? Column::ItemString
                 : name == "itemlong"   ? Column::ItemLong
                 : name == "item"       ? Column::Item
                                        : Column::None;
        if (column == Column::None) return true;
        if (now) sort();
        return false;
    }

    const std::vector<Variant>& enumerate() {
        if (!snapshot) {
            for (std::size_t i = 0; i < rows.size(); ++i) {
                for (std::size_t j = 0; j < i; ++j) {
                    if (rows[i].key == rows[j].key) throw Error(PlatformError::DuplicateKey);
                }
            }
            snapshot.emplace();
            for (const Row& row : rows) snapshot->push_back(row.item);
        }
        return *snapshot;
    }

  private:
    int order(const Text& a, const Text& b) const {
        if (compare != 0) return CompareTexts(a, b, CompareMode::Text);
        const std::u16string left(a.Units());
        const std::u16string right(b.Units());
        return left < right ? -1 : right < left ? 1 : 0;
    }

    [[noreturn]] static void raise(int number, const char* member, const std::string& message,
                                   const Variant& argument) {
        Text shown;
        IgnoringErrors([&] { shown = argument.ToText(); });
        throw Error(-2147221504 + number, Text("ZorvaneDemoProject.KeyListEX::") + member,
                    Text(message) + shown);
    }
};

}  // namespace zorvane
