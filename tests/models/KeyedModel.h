#pragma once
// KeyedModel: what the models of keyed records share, told step by step on a plain vector.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "tests/support/LiteralSort.h"
#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/runtime/AddOptions.h"

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

    std::vector<Row> rows;
    bool changed = false, descending = false, sorted = true, unique = true;
    std::int32_t compare = 0, granularity = 0, capacity = 0;
    std::string column = "key";  // that is sorted by; "" when none is
    std::optional<std::vector<Variant>> snapshot;

    KeyedModel(const char* className, std::vector<std::string> columns = {},
               const char* itemStringMember = "ItemString")
        : className_(className),
          columns_(std::move(columns)),
          itemStringMember_(itemStringMember) {}
    virtual ~KeyedModel() = default;

    // A key search by the class's own means: found, and the position as Exists reports it.
    virtual bool Exists(const Text& key, std::int32_t& index) = 0;
    virtual void reordered() {}
    virtual void erased(std::int32_t /*position*/, const Row& /*row*/) {}

    std::int32_t count() const { return static_cast<std::int32_t>(rows.size()); }
    Row& at(std::int32_t position) { return rows[static_cast<std::size_t>(position) - 1]; }

    // The position that a key or position names, or 0.
    std::int32_t resolve(const Variant& v) {
        if (rows.empty()) return 0;
        std::int32_t index = 0;
        if (v.IsText()) return Exists(v.AsText(), index) ? index : 0;
        if (v.Type() != VarType::Long && v.Type() != VarType::Integer) return 0;
        index = v.ToLong();
        return index >= 1 && index <= count() ? index : 0;
    }
    Row& find(const Variant& v, const char* member, const char* label = "KeyIndex = ") {
        const std::int32_t index = resolve(v);
        if (index == 0) raise(28500, member, label, v);
        return at(index);
    }

    // The members of the container, by their names.
    Variant Item(const Variant& v) { return find(v, "Item").item; }
    void SetItem(const Variant& v, const Variant& value) { find(v, "Item").item = value; }
    std::int32_t ItemLong(const Variant& v) { return find(v, "ItemLong").itemLong; }
    void SetItemLong(const Variant& v, std::int32_t value) { find(v, "ItemLong").itemLong = value; }
    Text ItemString(const Variant& v) { return find(v, itemStringMember_).itemString; }
    void SetItemString(const Variant& v, const Text& value) {
        find(v, itemStringMember_).itemString = value;
    }
    bool ItemFn(const Variant& v, Variant& value) {
        const std::int32_t position = resolve(v);
        if (position != 0) value = at(position).item;
        return position != 0;
    }
    Text Key(std::int32_t position) { return find(position, "Key", "Index = ").key; }
    void SetCompare(std::int32_t) { compare = compare != 0 ? 1 : 0; }
    void SetDescending(bool value) { descending = value; }
    void SetSorted(bool value) { sorted = value; }
    void SetUnique(bool value) { unique = value; }
    std::int32_t Capacity() const { return capacity; }
    std::int32_t Count() const { return count(); }

    Variant Remove(const Variant& v, bool returnItem = false) {
        snapshot.reset();
        const std::int32_t position = resolve(v);
        if (position == 0 && !returnItem) return std::int16_t{0};
        const Row doomed = find(v, "Remove", "Key = ");
        rows.erase(rows.begin() + (position - 1));
        erased(position, doomed);
        changed = true;
        return returnItem ? doomed.item : Variant(position);
    }

    bool Sort() {
        if (rows.empty() || column.empty()) return false;
        if (column == "item" && count() > 1) {
            for (const Row& row : rows) static_cast<void>(row.item.ToText());
        }
        LiteralSort(rows, descending, [&](const Row& a, const Row& b) {
            if (column == "key") return order(a.key, b.key);
            if (column == "item") return order(a.item.ToText(), b.item.ToText());
            if (column == "itemstring") return order(a.itemString, b.itemString);
            const auto field = column == "itemlong"   ? &Row::itemLong
                               : column == "hashcode" ? &Row::hashCode
                                                      : &Row::hashIndex;
            return (a.*field > b.*field) - (a.*field < b.*field);
        });
        reordered();
        return true;
    }
    bool SortBy(std::string name, bool now) {
        for (char& c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        const bool known = std::ranges::find(columns_, name) != columns_.end();
        column = known ? name : "";
        if (known && now) Sort();
        return !known;
    }

  protected:
    // The place that Before or After name: a position, or the failure's number.
    struct Named {
        std::int64_t position = 0;
        int failure = 0;
    };
    std::optional<Named> place(const AddOptions& options) {
        const std::optional<Variant>& given = options.Before ? options.Before : options.After;
        if (!given) return std::nullopt;
        std::int32_t named = 0;
        if (given->IsText() ? !Exists(given->AsText(), named)
                            : given->Type() != VarType::Long && given->Type() != VarType::Integer) {
            return Named{0, 28503};
        }
        if (!given->IsText()) named = given->ToLong();
        const std::int64_t position = std::int64_t{named} + (options.Before ? 0 : 1);
        if (position < 1 || position > count() + 1) return Named{0, 28502};
        return Named{position, 0};
    }

    Variant failAdd(int number, const Text& key, bool returnItem) {
        if (returnItem) raise(number, "Add", "Key = ", key);
        return static_cast<std::int16_t>(number == 28502 ? -28500 : -number);
    }

    // Room for a step more, which a source may have told as any number.
    static std::int32_t saturated(std::int32_t held, std::int32_t step, std::int32_t least,
                                  std::int32_t most) {
        const std::int64_t room = std::int64_t{held} + std::clamp(step, least, most);
        return static_cast<std::int32_t>(std::min<std::int64_t>(room, INT32_MAX));
    }

    // What Clear leaves alike everywhere.
    void empty(std::int32_t leastStep) {
        rows.clear();
        snapshot.reset();
        changed = descending = false;
        compare = 0;
        granularity = std::max(granularity, leastStep);
        sorted = unique = true;
        column = "key";
    }
    // Settings of a source of CopyFrom, as they come: all of them or none.
    void takeSettings(const std::vector<Variant>& cells) {
        std::tie(changed, compare, descending, granularity, sorted, unique) =
            std::tuple(cells[0].ToBoolean(), cells[1].ToLong(), cells[2].ToBoolean(),
                       cells[3].ToLong(), cells[4].ToBoolean(), cells[5].ToBoolean());
    }

    // The binary search: the middle is a real number rounded half to even.
    bool halves(const Text& key, std::int32_t& index, bool firstOfEquals) {
        if (column != "key" && column != "itemstring") SortBy("key", true);
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
            ((c > 0) != descending ? high : low) = middle + ((c > 0) != descending ? -1 : 1);
        }
        index = low;
        return false;
    }

    int order(const Text& a, const Text& b) const {
        if (compare != 0) return CompareTexts(a, b, CompareMode::Text);
        const std::u16string left(a.Units());
        const std::u16string right(b.Units());
        return left < right ? -1 : right < left ? 1 : 0;
    }

    [[noreturn]] void raise(int number, const char* member, const char* label,
                            const Variant& argument) const {
        const char* const message =
            number == 28500   ? "There is no item with the vKeyIndex specified."
            : number == 28501 ? "There is already an item with this vKeyIndex."
            : number == 28503 ? "Bad Before/After Value in call to Add"
                              : "Unknown error";
        Text shown;
        IgnoringErrors([&] { shown = argument.ToText(); });
        throw Error(-2147221504 + number, Text("ZorvaneDemoProject.") + className_ + "::" + member,
                    Text(message) + label + shown);
    }

  private:
    const char* className_;
    std::vector<std::string> columns_;
    const char* itemStringMember_;  // as errors name it
};

}  // namespace zorvane
