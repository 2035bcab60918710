#pragma once
// KeyedModel: what the models of the generated classes share, told step by step on a plain vector.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/CaseMapping.h"
#include "platform/Error.h"
#include "platform/Variant.h"
#include "tests/support/LiteralSort.h"

namespace zorvane {

class KeyedModel {
  public:
    struct Row {
        Variant item;
        std::int32_t itemLong = 0;
        Text itemString;
        Text key;
        std::int32_t hashCode = 0;
        std::int32_t hashIndex = 0;
    };
    enum class Column { None, Key, ItemString, ItemLong, Item, HashIndex, HashCode };

    std::vector<Row> rows;
    bool changed = false, descending = false, sorted = true, unique = true;
    std::int32_t compare = 0, granularity = 0;
    Column column = Column::Key;

    explicit KeyedModel(const char* className) : className_(className) {}
    virtual ~KeyedModel() = default;

    // A key search by the class's own means: found, and the position as Exists reports it.
    virtual bool exists(const Text& key, std::int32_t& index) = 0;
    virtual void reordered() {}
    [[nodiscard]] virtual bool isColumn(Column wanted) const = 0;

    std::int32_t count() const { return static_cast<std::int32_t>(rows.size()); }
    Row& at(std::int32_t position) { return rows[static_cast<std::size_t>(position) - 1]; }

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

    bool sort() {
        if (rows.empty() || column == Column::None) return false;
        if (column == Column::Item && count() > 1) {
            for (const Row& row : rows) static_cast<void>(row.item.ToText());
        }
        const auto numbers = [](std::int32_t a, std::int32_t b) { return (a > b) - (a < b); };
        LiteralSort(rows, descending, [&](const Row& a, const Row& b) {
            switch (column) {
                case Column::ItemString:
                    return order(a.itemString, b.itemString);
                case Column::ItemLong:
                    return numbers(a.itemLong, b.itemLong);
                case Column::Item:
                    return order(a.item.ToText(), b.item.ToText());
                case Column::HashIndex:
                    return numbers(a.hashIndex, b.hashIndex);
                case Column::HashCode:
                    return numbers(a.hashCode, b.hashCode);
                default:
                    return order(a.key, b.key);
            }
        });
        reordered();
        return true;
    }

    bool sortBy(std::string name, bool now) {
        for (char& c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        static const std::pair<const char*, Column> kNames[] = {{"key", Column::Key},
                                                                {"itemstring", Column::ItemString},
                                                                {"itemlong", Column::ItemLong},
                                                                {"item", Column::Item},
                                                                {"hashindex", Column::HashIndex},
                                                                {"hashcode", Column::HashCode}};
        column = Column::None;
        for (const auto& [known, its] : kNames) {
            if (name == known && isColumn(its)) column = its;
        }
        if (column == Column::None) return true;
        if (now) sort();
        return false;
    }

  protected:
    // The place that Before or After name: a position, or the failure's number.
    struct Place {
        std::int64_t position = 0;
        int failure = 0;
    };
    std::optional<Place> place(const std::optional<Variant>& before,
                               const std::optional<Variant>& after) {
        const std::optional<Variant>& given = before ? before : after;
        if (!given) return std::nullopt;
        std::int64_t position = 0;
        std::int32_t named = 0;
        if (given->IsText()) {
            if (!exists(given->AsText(), named)) return Place{0, 28503};
            position = named;
        } else if (given->Type() == VarType::Long || given->Type() == VarType::Integer) {
            position = given->ToLong();
        } else {
            return Place{0, 28503};
        }
        if (!before) ++position;
        if (position < 1 || position > count() + 1) return Place{0, 28502};
        return Place{position, 0};
    }

    Variant failAdd(int number, const Text& key, bool returnItem) {
        if (returnItem) {
            raise(number, "Add",
                  std::string(number == 28501   ? "There is already an item with this vKeyIndex."
                              : number == 28503 ? "Bad Before/After Value in call to Add"
                                                : "Unknown error") +
                      "Key = ",
                  key);
        }
        return static_cast<std::int16_t>(number == 28502 ? -28500 : -number);
    }

    // The binary search: the middle is a real number rounded half to even.
    bool halves(const Text& key, std::int32_t& index, bool firstOfEquals) {
        std::int32_t low = 1;
        std::int32_t high = count();
        while (low <= high) {
            const auto middle = static_cast<std::int32_t>(std::nearbyint((low + high) / 2.0));
            const int c = order(at(middle).key, key);
            if (c == 0) {
                index = middle;
                while (firstOfEquals && index > 1 && order(at(index - 1).key, key) == 0) --index;
                return true;
            }
            if ((c > 0) != descending) {
                high = middle - 1;
            } else {
                low = middle + 1;
            }
        }
        index = low;
        return false;
    }
    void keyOrderForSearch() {
        if (column != Column::Key && column != Column::ItemString) sortBy("key", true);
    }

    int order(const Text& a, const Text& b) const {
        if (compare != 0) return CompareTexts(a, b, CompareMode::Text);
        const std::u16string left(a.Units());
        const std::u16string right(b.Units());
        return left < right ? -1 : right < left ? 1 : 0;
    }

    [[noreturn]] void raise(int number, const char* member, const std::string& message,
                            const Variant& argument) const {
        Text shown;
        IgnoringErrors([&] { shown = argument.ToText(); });
        throw Error(-2147221504 + number, Text("ZorvaneDemoProject.") + className_ + "::" + member,
                    Text(message) + shown);
    }

    // Settings of a source of CopyFrom, as they come.
    void takeSettings(const std::vector<Variant>& cells) {
        changed = cells[0].ToBoolean();
        compare = cells[1].ToLong();
        descending = cells[2].ToBoolean();
        granularity = cells[3].ToLong();
        sorted = cells[4].ToBoolean();
        unique = cells[5].ToBoolean();
    }

  private:
    const char* className_;
};

}  // namespace zorvane
