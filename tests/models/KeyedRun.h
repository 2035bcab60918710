#pragma once
// KeyedRun: any operations on a keyed container and on its model.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "platform/Variant.h"
#include "runtime/AddOptions.h"
#include "tests/models/StepRun.h"
#include "tests/support/ScriptedSource.h"

namespace zorvane {

template <class Container, class Model>
class KeyedRun : public StepRun {
  public:
    // Kinds divisible by 5 run at some thousand records, by 3 at some hundred, others at a few. The
    // odd ones of the first are calm: keys that four units tell apart, and few changes of
    // order, so that whatever an order allows is in use.
    explicit KeyedRun(std::uint32_t kind)
        : universe_(kind % 5 == 0   ? 6000
                    : kind % 3 == 0 ? 400
                                    : 24),
          stateEvery_(kind % 5 == 0 ? 97 : 1),
          calm_(kind % 10 == 5),
          alike_(kind % 20 == 15),
          target_(calm_ ? 2000 : 20) {}

  protected:
    virtual void OperateSpecially(const Variant& v, const Text& key) = 0;
    [[nodiscard]] virtual std::vector<Variant> ModelCells(std::int32_t position) = 0;
    [[nodiscard]] virtual std::int32_t ModelCapacity() = 0;
    virtual std::vector<Variant> SourceRecord() = 0;

    Text SomeKey() {
        // Case pairs, an umlaut in both cases, a key whose hash is negative, long keys that differ
        // only behind the hashed part, and one that sorts between.
        static const Text kLong(std::u16string(130, u'x')), kFours(std::u16string(4, u'\uFFFF'));
        static const Text kOdd[] = {"",
                                    "Ab",
                                    "aB",
                                    "AB",
                                    "ab",
                                    "_",
                                    u"\u00C4",
                                    u"\u00E4",
                                    u"\u8000",
                                    u"\uFFEF",
                                    kFours,
                                    kFours + "1",
                                    kLong + "1",
                                    kLong + "2",
                                    kLong + u"\u0100",
                                    Text(std::u16string(130, u'X') + u"1")};
        if (!calm_ && Chance(15)) return kOdd[Below(std::size(kOdd))];
        if (!calm_) return Text("key ") + Text(std::to_string(Below(universe_)));
        // Often a neighbour of the last.
        last_ = Chance(60) ? (last_ + universe_ + Below(7) - 3) % universe_ : Below(universe_);
        const Text number = std::to_string(1000 + last_);
        return alike_ && !Chance(10) ? kFours + number : number;
    }
    std::int32_t SomePosition() {
        return static_cast<std::int32_t>(Below(static_cast<unsigned>(model_.count()) + 4)) - 1;
    }
    Variant SomeKeyOrPosition() {
        const unsigned chosen = Below(12);
        if (chosen == 0) return static_cast<std::int16_t>(SomePosition());
        if (chosen == 1) return 2.0;
        if (chosen == 2) return Chance(50) ? Variant() : Variant::Null();
        if (chosen < 6) return SomePosition();
        return SomeKey();
    }
    Variant SomeItem() {
        const unsigned chosen = Below(8);
        if (chosen == 0) return SomeKey();
        if (chosen == 1) return Chance(4) ? Variant::Null() : Variant(0.5);
        if (chosen == 2) return Chance(50);
        return static_cast<std::int32_t>(Below(30));
    }

    template <class Items = std::initializer_list<Variant>>
    static std::string Joined(const Items& items) {
        std::ostringstream all;
        all.exceptions(std::ios::badbit);  // lack of memory is no text
        for (const Variant& item : items) all << item << ',';
        return all.str();
    }
    static std::string FoundAt(bool found, std::int32_t at) {
        return (found ? "found @" : "missed @") + std::to_string(at);
    }

    Container container_;
    Model model_;

  private:
    std::optional<Variant> SomePlace() {
        if (Chance(80)) return std::nullopt;
        return Drawn(Chance(5) ? Variant(std::int32_t{2147483647}) : SomeKeyOrPosition());
    }

    void Operate() override {
        const bool returnItem = Drawn(Chance(50));
        const Variant v = Drawn(SomeKeyOrPosition());
        const Text key = Drawn(SomeKey());
        const Variant item = Drawn(SomeItem());
        const unsigned choice = Below(100);
        if (choice < (model_.count() < target_ ? 45u : 20u)) {
            const auto before = SomePlace();
            const auto after = SomePlace();
            const std::int32_t position = Drawn(Chance(50) ? 0 : SomePosition());
            if (key.Empty() && !model_.sorted) return;  // a generated key is random
            Do(
                "Add",
                [&] {
                    return container_.Add(item, key, {before, after, position, returnItem});
                },
                [&] { return model_.add(item, key, before, after, position, returnItem); });
        } else if (choice < 60) {
            Do(
                "Remove", [&] { return container_.Remove(v, returnItem); },
                [&] { return model_.remove(v, returnItem); });
        } else {
            OperateOnOne(v, key, item);
        }
        if (!calm_ && Chance(1)) target_ = static_cast<std::int32_t>(Below(universe_ / 3 + 22));
    }

    void OperateOnOne(const Variant& v, const Text& key, const Variant& item) {
        const auto value = Drawn(static_cast<std::int32_t>(Below(9)));
        if (calm_ && Below(1000) == 0) return RemoveMany(static_cast<std::int32_t>(Below(700)));
        const unsigned chosen = Below(calm_ && !Chance(2) ? 11 : 20);
        if (chosen < 2) return OperateSpecially(v, key);
        if (chosen > 13) return OperateOnSettings();
        if (chosen > 11) return SortBy();
        DoChosen(chosen,
                 {{3, "Item", [&] { return container_.Item(v); },
                   [&] { return model_.find(v, "Item").item; }},
                  {4, "SetItem", [&] { container_.SetItem(v, item); },
                   [&] { model_.find(v, "Item").item = item; }},
                  {5, "ItemLong", [&] { return container_.ItemLong(v); },
                   [&] { return model_.find(v, "ItemLong").itemLong; }},
                  {7, "SetItemLong", [&] { container_.SetItemLong(v, value); },
                   [&] { model_.find(v, "ItemLong").itemLong = value; }},
                  {8, "ItemString", [&] { return container_.ItemString(v); },
                   [&] { return model_.find(v, kItemString).itemString; }},
                  {10, "SetItemString", [&] { container_.SetItemString(v, key); },
                   [&] { model_.find(v, kItemString).itemString = key; }},
                  {11, "ItemFn",
                   [&] {
                       Variant got = u"untouched";
                       return container_.ItemFn(v, got) ? got : got;
                   },
                   [&] {
                       const std::int32_t at = model_.resolve(v);
                       return at == 0 ? Variant(u"untouched") : model_.at(at).item;
                   }},
                  {12, "Sort", [&] { return container_.Sort(); }, [&] { return model_.sort(); }}});
    }

    void SortBy() {
        static const char* const kNames[] = {"key",  "Item",     "ITEMSTRING", "ItemLong",
                                             "Name", "HashCode", "hashindex"};
        const char* const name = Drawn(kNames[Below(std::size(kNames))]);
        const bool now = Chance(70);
        Do(
            "SortBy", [&] { return container_.SortBy(name, now); },
            [&] { return model_.sortBy(name, now); });
    }

    // Neighbours, so that whole blocks of an order are emptied.
    void RemoveMany(std::int32_t many) {
        const std::int32_t at = Drawn(SomePosition());
        const auto removeFrom = [=](auto&& remove) {
            std::int32_t removed = 0;
            for (std::int32_t i = 0; i < many; ++i) removed += remove(Variant(at)).ToLong() == at;
            return removed;
        };
        DoAtOnce(
            "Remove many",
            [&] { return removeFrom([&](const Variant& v) { return container_.Remove(v); }); },
            [&] { return removeFrom([&](const Variant& v) { return model_.remove(v, false); }); });
    }

    void OperateOnSettings() {
        const bool flag = Drawn(Chance(60));
        const unsigned chosen = Below(30);
        const auto step = static_cast<std::int32_t>(chosen == 6 ? Below(300) : 0);
        if (chosen > 7 && Chance(80)) return;  // what changes most comes least
        if (chosen == 9) return Copy(flag);
        DoChosen(
            chosen,
            {{2, "SetSorted", [&] { container_.SetSorted(flag); }, [&] { model_.sorted = flag; }},
             {4, "SetDescending", [&] { container_.SetDescending(flag); },
              [&] { model_.descending = flag; }},
             {6, "SetUnique", [&] { container_.SetUnique(flag); }, [&] { model_.unique = flag; }},
             {7, "SetGranularity", [&] { container_.SetGranularity(step); },
              [&] { model_.setGranularity(step); }},
             {8, "SetCompare", [&] { container_.SetCompare(1); },
              [&] { model_.compare = model_.compare != 0 ? 1 : 0; }},
             {9, "Clear", [&] { container_.Clear(); }, [&] { model_.clear(); }}});
    }

    void Copy(bool mark) {
        ScriptedSource source;
        const auto n = static_cast<std::int32_t>(Below(20));
        source.Cells.push_back({Chance(50), static_cast<std::int32_t>(Below(3)), Chance(20),
                                static_cast<std::int32_t>(1 + Below(60)), Chance(80), Chance(80)});
        for (std::int32_t i = 0; i < n; ++i) source.Cells.push_back(SourceRecord());
        source.CountAnswer = n;
        if (Chance(50)) {
            return Do(
                "CopyFrom, elsewhere",
                [&] {
                    Container other;
                    other.CopyFrom(source, mark);
                    return other.Count();
                },
                [&] { return n; });
        }
        DoAtOnce(
            "CopyFrom", [&] { container_.CopyFrom(source, mark); },
            [&] { model_.copyFrom(source.Cells, n, mark); });
    }

    std::string StateDiffers(bool last) override {
        if (!last && Number() % stateEvery_ != 0) return {};
        if (container_.Count() != model_.count()) return "Count differs";
        if (container_.Capacity() != ModelCapacity()) return "Capacity differs";
        const Variant settings[] = {model_.changed,     model_.compare, model_.descending,
                                    model_.granularity, model_.sorted,  model_.unique};
        for (std::int32_t i = 1; i <= 6; ++i) {
            if (!(container_.CopyItemValue(0, i) == settings[i - 1]))
                return "setting " + std::to_string(i) + " differs";
        }
        for (std::int32_t i = 1; i <= model_.count(); ++i) {
            const std::vector<Variant> cells = ModelCells(i);
            for (std::size_t column = 0; column < cells.size(); ++column) {
                const Variant ours =
                    container_.CopyItemValue(i, static_cast<std::int32_t>(column) + 1);
                if (!(ours == cells[column])) {
                    return "record " + std::to_string(i) + ", column " +
                           std::to_string(column + 1) + " is " + OutcomeOf([&] { return ours; }) +
                           ", not " + OutcomeOf([&] { return cells[column]; });
                }
            }
        }
        return {};
    }

    // A look-up may have sorted by key before memory ran out.
    std::string FailedStateDiffers() override {
        std::vector<std::string> ours, models;
        for (std::int32_t i = 1; i <= container_.Count(); ++i) {
            ours.push_back(OutcomeOf([&] { return container_.Key(i); }) +
                           Joined({container_.Item(i)}));
        }
        for (std::int32_t i = 1; i <= model_.count(); ++i) {
            models.push_back(OutcomeOf([&] { return model_.at(i).key; }) +
                             Joined({model_.at(i).item}));
        }
        std::ranges::sort(ours);
        std::ranges::sort(models);
        return ours == models ? "" : "the entries are others";
    }

    static constexpr const char* kItemString = Model::kItemString;
    unsigned universe_;
    int stateEvery_;
    bool calm_, alike_;  // alike: with most keys, four units tell nothing
    unsigned last_ = 0;
    std::int32_t target_;
};

}  // namespace zorvane
