#include "tests/unit/keylist/CollectionExModelRun.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "keylist/CollectionEx.h"
#include "platform/CaseMapping.h"
#include "platform/Error.h"

namespace zorvane {
namespace {

// The steps of each member, told on a list.
class LiteralList {
  public:
    struct Row {
        Variant item;
        Text key;
    };

    std::vector<Row> rows;
    std::int32_t capacity = 1000, initialSize = 1000, growStep = 1000;
    double ratio = 2;
    bool sorted = false;
    std::vector<Variant> snapshot;
    bool hasSnapshot = false;

    std::int32_t count() const { return static_cast<std::int32_t>(rows.size()); }
    auto at(std::int32_t position) { return rows.begin() + (position - 1); }

    std::int32_t tableSize() const {
        return static_cast<std::int32_t>(std::nearbyint(ratio * capacity)) | 1;
    }
    std::int32_t index(const Text& key) const {
        for (std::int32_t i = 1; i <= count(); ++i) {
            if (rows[static_cast<std::size_t>(i) - 1].key == LowerCase(key)) return i;
        }
        return -1;
    }
    void checkIndex(std::int32_t position) const {
        if (position < 1 || position > count()) throw Error(9);
    }
    std::int32_t positionOf(const Variant& v) const {
        if (v.IsText()) {
            if (index(v.AsText()) < 0) throw Error(5);
            return index(v.AsText());
        }
        checkIndex(v.ToLong());
        return v.ToLong();
    }

    void add(const Variant& item, const Text& key, const CollectionExAdd& options) {
        const std::int32_t present = index(key);
        if (present > 0) {
            if (!options.Replace) throw Error(457);
            at(present)->item = item;
        } else {
            if (count() == capacity) capacity += growStep;
            std::int32_t position = count() + 1;
            if (sorted) {
                position = 1;
                while (position <= count() && before(*at(position), LowerCase(key))) ++position;
            } else if (options.Before && options.After) {
                throw Error(5);
            } else if (options.Before) {
                position = positionOf(*options.Before);
            } else if (options.After) {
                position = positionOf(*options.After) + 1;
            }
            rows.insert(at(position), {item, LowerCase(key)});
        }
        hasSnapshot = false;
    }
    void remove(const Variant& v, bool quiet) {
        if (quiet) {
            if (v.IsText() && index(v.AsText()) < 0) return;
            if (!v.IsText() && (v.ToLong() < 1 || v.ToLong() > count())) return;
        }
        rows.erase(at(positionOf(v)));
    }
    void setMemory(std::int32_t size, std::int32_t step, float slots) {
        initialSize = std::max(size, 20);
        ratio = std::max(static_cast<double>(slots), 1.5);
        growStep = step < 20 ? initialSize : step;
        if (rows.empty()) {
            clear();
        } else {
            capacity = std::max(initialSize, count());
        }
    }
    void clear() {
        rows.clear();
        capacity = initialSize;
        hasSnapshot = false;
    }
    void setSorted(bool value) {
        if (value && !sorted) {
            std::ranges::sort(rows, [](const Row& a, const Row& b) { return before(a, b.key); });
        }
        sorted = value;
    }
    const std::vector<Variant>& newEnum() {
        if (!hasSnapshot) {
            snapshot.clear();
            for (const Row& row : rows) snapshot.push_back(row.item);
            hasSnapshot = true;
        }
        return snapshot;
    }

  private:
    static bool before(const Row& row, const Text& key) { return row.key.Units() < key.Units(); }
};

class PairedRun {
  public:
    explicit PairedRun(std::uint32_t seed) : random_(seed) {}

    // Gives what disagreed, or nothing.
    std::string Step() {
        const auto [what, actual, expected] = OneOperation();
        if (actual != expected) return what + ": " + actual + " instead of " + expected;
        return StateDiffers() ? what + ": the state differs" : "";
    }

  private:
    struct Outcome {
        std::string what, actual, expected;
    };

    std::int32_t Below(std::int32_t n) {
        return static_cast<std::int32_t>(random_() % static_cast<std::uint32_t>(n));
    }
    Text AnyKey() {
        // Few keys, so that they meet again; in both cases, with one hash, of one unit, long.
        const auto i = static_cast<char16_t>(Below(12));
        switch (Below(6)) {
            case 0:
                return std::u16string{static_cast<char16_t>((Below(2) ? u'A' : u'a') + i)};
            case 1:
                return std::u16string{static_cast<char16_t>(0x4E00 + i),
                                      static_cast<char16_t>(0x5000 - 2 * i)};
            case 2:
                return std::u16string{static_cast<char16_t>(0x7FE8 + i)};
            case 3:
                return std::u16string(256, u'K') + i;
            case 4:
                return Below(12) == 0 ? Text() : Text(u"String") + Variant(Below(40)).ToText();
            default:
                return std::u16string{u'\xD801', static_cast<char16_t>(0xDC00 + i + 40 * Below(2))};
        }
    }
    Variant AnyIndex() {
        switch (Below(8)) {
            case 0:
                return static_cast<std::int16_t>(Below(list_.count() + 3) - 1);
            case 1:
                return Below(2 * list_.count() + 4) / 2.0;
            case 2:
                return Below(8) == 0 ? Variant::Null() : Variant(Below(list_.count() + 2));
            case 3:
                return Below(list_.count() + 2);
            default:
                return AnyKey();
        }
    }
    std::optional<Variant> Perhaps() {
        return Below(3) == 0 ? std::optional(AnyIndex()) : std::nullopt;
    }
    static std::string Of(const std::function<Variant()>& operation) {
        try {
            return operation().ToText().ToUtf8();
        } catch (const Error& error) {
            return "error " + std::to_string(error.Number);
        }
    }

    Outcome OneOperation() {
        auto& c = collection_;
        auto& l = list_;
        const Text key = AnyKey();
        const Variant v = AnyIndex();
        const std::int32_t n = ++step_;
        switch (const std::int32_t kind = Below(100)) {
            case 0:
                if (Below(4) == 0) return {"Clear", (c.Clear(), ""), (l.clear(), "")};
                [[fallthrough]];
            case 1: {
                const std::int32_t size = Below(100), step = Below(60);
                const auto ratio = static_cast<float>(Below(12)) / 4;
                return {"SetMemory", (c.SetMemory(size, step, ratio), ""),
                        (l.setMemory(size, step, ratio), "")};
            }
            case 2:
            case 3:
                return {"Sorted", (c.SetSorted(kind == 2), ""), (l.setSorted(kind == 2), "")};
            default:
                if (kind < 45) {
                    const CollectionExAdd o{Perhaps(), Perhaps(), Below(4) == 0};
                    return {"Add", Of([&] { return c.Add(n, key, o), Variant(); }),
                            Of([&] { return l.add(n, key, o), Variant(); })};
                }
                if (kind < 70) {
                    const bool quiet = Below(2) == 0;
                    return {"Remove", Of([&] { return c.Remove(v, quiet), Variant(); }),
                            Of([&] { return l.remove(v, quiet), Variant(); })};
                }
                if (kind < 85) {
                    return {"Item", Of([&] { return c.Item(v); }),
                            Of([&] { return l.at(l.positionOf(v))->item; })};
                }
                return {"Exists", Of([&] { return c.Exists(v); }), Of([&]() -> Variant {
                            if (v.IsText()) return l.index(v.AsText()) > 0;
                            return v.ToDouble() >= 1 && v.ToDouble() <= l.count();
                        })};
        }
    }

    bool StateDiffers() {
        if (collection_.Count() != list_.count() || collection_.Sorted() != list_.sorted ||
            collection_.Capacity() != list_.capacity ||
            collection_.TableSize() != list_.tableSize()) {
            return true;
        }
        std::int32_t position = 0;
        for (const Variant& item : collection_) {
            const LiteralList::Row& row = *list_.at(++position);
            if (item != row.item || collection_.Key(position) != row.key ||
                collection_.Index(row.key) != position) {
                return true;
            }
        }
        if (Below(4) != 0) return position != list_.count();
        const Enumerator all = collection_.NewEnum();
        return !std::ranges::equal(all, list_.newEnum());
    }

    std::mt19937 random_;
    std::int32_t step_ = 0;
    CollectionEx collection_;
    LiteralList list_;
};

}  // namespace

std::optional<std::string> RunCollectionExModel(std::uint32_t seed, int operations) {
    PairedRun run(seed);
    for (int i = 1; i <= operations; ++i) {
        const std::string wrong = run.Step();
        if (!wrong.empty()) return "operation " + std::to_string(i) + ", " + wrong;
    }
    return std::nullopt;
}

}  // namespace zorvane
