#include "tests/unit/keylist/KeyListModelRun.h"

#include <random>
#include <sstream>

#include "keylist/KeyListEX.h"
#include "tests/support/Outcome.h"
#include "tests/unit/keylist/KeyListModel.h"

namespace zorvane {
namespace {

class Run {
  public:
    explicit Run(std::uint32_t seed) : random_(seed), universe_(seed % 3 == 0 ? 400 : 24) {}

    std::optional<std::string> Step() {
        std::string ours;
        std::string models;
        Operate(ours, models);
        if (ours != models) return what_ + ": " + ours + "\n  the model: " + models;
        return State();
    }

  private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
    bool Chance(unsigned percent) { return Below(100) < percent; }

    Text SomeKey() {
        static const char* const kOdd[] = {"",         "Ab",       "aB", "AB",     "ab",
                                           "\xC3\x84", "\xC3\xA4", "_",  "key 10", "key 9"};
        if (Chance(15)) return kOdd[Below(10)];
        return Text("key ") + Text(std::to_string(Below(universe_)));
    }
    std::int32_t SomePosition() {
        return static_cast<std::int32_t>(Below(static_cast<unsigned>(model_.count()) + 4)) - 1;
    }
    Variant SomeKeyOrPosition() {
        switch (Below(12)) {
            case 0:
                return static_cast<std::int16_t>(SomePosition());
            case 1:
                return 2.0;
            case 2:
                return Chance(50) ? Variant() : Variant::Null();
            case 3:
            case 4:
            case 5:
                return SomePosition();
            default:
                return SomeKey();
        }
    }
    Variant SomeItem() {
        switch (Below(8)) {
            case 0:
                return SomeKey();
            case 1:
                return Chance(4) ? Variant::Null() : Variant(0.5);
            case 2:
                return Chance(50);
            default:
                return static_cast<std::int32_t>(Below(30));
        }
    }
    std::optional<Variant> SomePlace() {
        if (Chance(80)) return std::nullopt;
        return Chance(5) ? Variant(std::int32_t{2147483647}) : SomeKeyOrPosition();
    }

    template <class Ours, class Models>
    void Do(const char* what, std::string& ours, std::string& models, Ours&& our, Models&& model) {
        what_ = what;
        ours = OutcomeOf(our);
        models = OutcomeOf(model);
    }

    void Operate(std::string& ours, std::string& models) {
        const bool returnItem = Chance(50);
        const Variant v = SomeKeyOrPosition();
        const Text key = SomeKey();
        const Variant item = SomeItem();
        const unsigned wanted = model_.count() < target_ ? 45 : 20;
        const unsigned choice = Below(100);
        if (choice < wanted) {
            const auto before = SomePlace();
            const auto after = SomePlace();
            Do(
                "Add", ours, models,
                [&] {
                    return list_.Add(item, key,
                                     {.Before = before, .After = after, .ReturnItem = returnItem});
                },
                [&] { return model_.add(item, key, before, after, returnItem); });
        } else if (choice < 60) {
            Do(
                "Remove", ours, models, [&] { return list_.Remove(v, returnItem); },
                [&] { return model_.remove(v, returnItem); });
        } else {
            OperateOnOne(ours, models, v, key, item);
        }
        if (Chance(1)) target_ = static_cast<std::int32_t>(Below(universe_ == 24 ? 30 : 120));
    }

    void OperateOnOne(std::string& ours, std::string& models, const Variant& v, const Text& key,
                      const Variant& item) {
        switch (Below(20)) {
            case 0:
                return Do(
                    "Exists", ours, models,
                    [&] {
                        std::int32_t at = 77;
                        const bool found = list_.Exists(key, at);
                        return std::to_string(found) + "@" + std::to_string(at);
                    },
                    [&] {
                        std::int32_t at = 77;
                        const bool found = model_.exists(key, at);
                        return std::to_string(found) + "@" + std::to_string(at);
                    });
            case 1:
                return Do(
                    "Item", ours, models, [&] { return list_.Item(v); },
                    [&] { return model_.find(v, "Item").item; });
            case 2:
                return Do(
                    "SetItem", ours, models, [&] { list_.SetItem(v, item); },
                    [&] { model_.find(v, "Item").item = item; });
            case 3:
                return Do(
                    "ItemLong", ours, models, [&] { return list_.ItemLong(v); },
                    [&] { return model_.find(v, "ItemLong").itemLong; });
            case 4:
            case 5: {
                const auto value = static_cast<std::int32_t>(Below(9));
                return Do(
                    "SetItemLong", ours, models, [&] { list_.SetItemLong(v, value); },
                    [&] { model_.find(v, "ItemLong").itemLong = value; });
            }
            case 6:
                return Do(
                    "ItemString", ours, models, [&] { return list_.ItemString(v); },
                    [&] { return model_.find(v, "ItemString").itemString; });
            case 7:
            case 8:
                return Do(
                    "SetItemString", ours, models, [&] { list_.SetItemString(v, key); },
                    [&] { model_.find(v, "ItemString").itemString = key; });
            case 9: {
                const std::int32_t at = SomePosition();
                return Do(
                    "SetKey", ours, models, [&] { list_.SetKey(at, key); },
                    [&] { model_.setKey(at, key); });
            }
            case 10:
                return Do(
                    "ItemFn", ours, models,
                    [&] {
                        Variant value = u"untouched";
                        static_cast<void>(list_.ItemFn(v, value));
                        return value;
                    },
                    [&] {
                        const std::int32_t at = model_.resolve(v);
                        return at == 0 ? Variant(u"untouched") : model_.at(at).item;
                    });
            case 11:
                return Do(
                    "Sort", ours, models, [&] { return list_.Sort(); },
                    [&] { return model_.sort(); });
            case 12:
            case 13: {
                static const char* const kNames[] = {"key", "Item", "ITEMSTRING", "ItemLong",
                                                     "Name"};
                const char* const name = kNames[Below(5)];
                const bool now = Chance(70);
                return Do(
                    "SortBy", ours, models, [&] { return list_.SortBy(name, now); },
                    [&] { return model_.sortBy(name, now); });
            }
            case 14:
                if (Chance(70)) return;
                return Do(
                    "Enumerate", ours, models, [&] { return Joined(list_.NewEnum()); },
                    [&] { return Joined(model_.enumerate()); });
            default:
                return Set(ours, models);
        }
    }

    void Set(std::string& ours, std::string& models) {
        const bool flag = Chance(60);
        switch (Below(30)) {
            case 0:
            case 1:
                return Do(
                    "SetSorted", ours, models, [&] { list_.SetSorted(flag); },
                    [&] { model_.sorted = flag; });
            case 2:
            case 3:
                return Do(
                    "SetDescending", ours, models, [&] { list_.SetDescending(flag); },
                    [&] { model_.descending = flag; });
            case 4:
            case 5:
                return Do(
                    "SetUnique", ours, models, [&] { list_.SetUnique(flag); },
                    [&] { model_.unique = flag; });
            case 6: {
                const auto step = static_cast<std::int32_t>(Below(60));
                return Do(
                    "SetGranularity", ours, models, [&] { list_.SetGranularity(step); },
                    [&] { model_.granularity = std::max(16, step); });
            }
            case 7:
                return Do(
                    "SetCompare", ours, models, [&] { list_.SetCompare(1); },
                    [&] { model_.compare = model_.compare != 0 ? 1 : 0; });
            case 8:
                if (Chance(80)) return;
                return Do(
                    "Clear", ours, models, [&] { list_.Clear(); }, [&] { model_.clear(); });
            case 9:
                if (Chance(80)) return;
                return Copy(ours, models, flag);
            default:
                return;
        }
    }

    void Copy(std::string& ours, std::string& models, bool mark) {
        ScriptedSource source;
        const auto n = static_cast<std::int32_t>(Below(20));
        source.Cells.push_back({Chance(50), static_cast<std::int32_t>(Below(3)), Chance(20),
                                static_cast<std::int32_t>(Below(60)), Chance(80), Chance(80)});
        for (std::int32_t i = 0; i < n; ++i) {
            source.Cells.push_back(
                {SomeItem(), static_cast<std::int32_t>(Below(9)), SomeKey(), SomeKey()});
        }
        source.CountAnswer = n;
        Do(
            "CopyFrom", ours, models, [&] { list_.CopyFrom(source, mark); },
            [&] { model_.copyFrom(source.Cells, n, mark); });
    }

    template <class Items>
    static std::string Joined(const Items& items) {
        std::ostringstream all;
        for (const Variant& item : items) all << item << ',';
        return all.str();
    }

    std::optional<std::string> State() {
        const auto differs = [&](const std::string& where) {
            return "after " + what_ + " differs: " + where;
        };
        if (list_.Count() != model_.count()) return differs("Count");
        if (list_.Capacity() != std::max(model_.upper, model_.count())) return differs("Capacity");
        const Variant settings[] = {model_.changed,     model_.compare, model_.descending,
                                    model_.granularity, model_.sorted,  model_.unique};
        for (std::int32_t i = 1; i <= 6; ++i) {
            if (!(list_.CopyItemValue(0, i) == settings[i - 1]))
                return differs("setting " + std::to_string(i));
        }
        for (std::int32_t i = 1; i <= model_.count(); ++i) {
            const KeyListModel::Row& row = model_.at(i);
            const bool same = list_.CopyItemValue(i, 1) == row.item &&
                              list_.CopyItemValue(i, 2) == Variant(row.itemLong) &&
                              list_.CopyItemValue(i, 3) == Variant(row.itemString) &&
                              list_.CopyItemValue(i, 4) == Variant(row.key);
            if (!same) return differs("record " + std::to_string(i));
        }
        return std::nullopt;
    }

    std::mt19937 random_;
    unsigned universe_;
    std::int32_t target_ = 20;
    std::string what_;
    KeyListEX list_;
    KeyListModel model_;
};

}  // namespace

std::optional<std::string> RunKeyListModel(std::uint32_t seed, int operations) {
    Run run(seed);
    for (int i = 0; i < operations; ++i) {
        if (const auto disagreement = run.Step()) {
            return "seed " + std::to_string(seed) + ", operation " + std::to_string(i) + ": " +
                   *disagreement;
        }
    }
    return std::nullopt;
}

}  // namespace zorvane
