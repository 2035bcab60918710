#pragma once
// KeyedRun: any operations on a keyed container and on its model.

#include <set>

#include "tests/models/StepRun.h"
#include "tests/support/CountedObject.h"
#include "tests/support/ScriptedSource.h"
#include "zorvane/runtime/AddOptions.h"
#include "zorvane/runtime/KeyedEntry.h"

namespace zorvane {

template <class Container, class Model>
class KeyedRun : public StepRun {
  public:
    // Kinds divisible by 5 run at some thousand records, by 3 at some hundred, by 4 at two or
    // three, others at a few. The odd ones of the first are calm: keys that four units tell apart,
    // and few changes of order, so that whatever an order allows is in use.
    explicit KeyedRun(std::uint32_t kind)
        : universe_(kind % 5 == 0   ? 6000
                    : kind % 3 == 0 ? 400
                    : kind % 4 == 0 ? 3
                                    : 24),
          stateEvery_(kind % 5 == 0 ? 97 : 1),
          calm_(kind % 10 == 5),
          alike_(kind % 20 == 15),
          lead_(kind % 40 != 25   ? u""
                : kind % 80 == 25 ? u"key number "
                                  : u"k"),
          numbers_(kind % 4 == 3),
          crowded_(kind % 4 == 2),
          target_(calm_           ? 2000
                  : universe_ < 9 ? 2
                                  : 20) {}

  protected:
    virtual void OperateSpecially(const Variant& v, const Text& key) = 0;
    [[nodiscard]] virtual std::vector<Variant> ModelCells(std::int32_t position) = 0;
    virtual std::vector<Variant> SourceRecord() = 0;

    Text SomeKey() {
        // Case pairs, an umlaut in both cases, a key whose hash is negative, long keys that differ
        // only behind the hashed part, one that sorts between, and two of one hash that only case
        // tells apart.
        static const Text kFours(std::u16string(4, u'\uFFFF'));
        static const Text kStarts[] = {"", std::u16string(130, u'x'), std::u16string(130, u'X'),
                                       kFours};
        static const char16_t* const kOdd[] = {
            u"",       u"Ab",     u"aB",     u"AB",           u"ab",
            u"_",      u"1",      u"2",      u"\u00C4",       u"\u00E4",
            u"\u8000", u"\uFFEF", u"\u0100", u"\u0100\u01C6", u"\u0101\u01C4"};
        if (!calm_ && Chance(15)) {
            return kStarts[Chance(60) ? 0 : Below(std::size(kStarts))] +
                   kOdd[Below(std::size(kOdd))];
        }
        if (!calm_ && crowded_) return CrowdedKey(Below(universe_));
        if (!calm_) return Text("key ") + Text(std::to_string(Below(universe_)));
        // Often a neighbour of the last.
        last_ = Chance(60) ? (last_ + universe_ + Below(7) - 3) % universe_ : Below(universe_);
        std::u16string number(Text(std::to_string((lead_.empty() ? 1000 : 10) + last_)).Units());
        if (last_ / 100 % 2 != 0) number[1] |= 0x80;      // units of a byte, but not of seven bits
        if (last_ % 500 == 3) number.end()[-2] |= 0x100;  // and few that are more than a byte
        if (last_ % 7 == 5) number += u" and more";       // longer than eight units
        // Of more lengths than one; and, once there are many, some that do not begin as the others.
        const bool other = model_.count() > 500 && last_ % 40 == 9;
        if (!lead_.empty()) return (other ? u"l" : lead_) + number;
        return alike_ && !Chance(10) ? kFours + number : number;
    }
    std::int32_t SomePosition() {
        return static_cast<std::int32_t>(Below(static_cast<unsigned>(model_.count()) + 4)) - 1;
    }
    Variant SomeKeyOrPosition() {
        const unsigned chosen = Below(12);
        if (chosen == 0) return static_cast<std::int16_t>(SomePosition());
        if (chosen == 1 && Chance(50)) return 2.0;
        if (chosen == 1) return Variant::FromDecimal({.Low = (std::uint64_t{1} << 32) + 1});
        if (chosen == 2) return Chance(50) ? Variant() : Variant::Null();
        if (chosen < 6) return SomePosition();
        return SomeKey();
    }
    Variant SomeItem() {
        const auto range = static_cast<std::int32_t>(Chance(20) ? 6 : 10000);
        if (numbers_) return static_cast<std::int32_t>(Below(30000)) % (3 * range) - range;
        const unsigned chosen = Below(8);
        if (chosen == 0) return SomeKey();
        if (chosen == 1) return Chance(4) ? Variant::Null() : Variant(0.5);
        if (chosen == 2) return Chance(50);
        return static_cast<std::int32_t>(Below(30));
    }

    template <class Operation>
    Choice Both(unsigned bound, const char* what, Operation operation) {
        return OnEither(bound, what, container_, model_, operation);
    }
    // The same with a key or position that ours is given in some form.
    template <class Operation>
    Choice BothNamed(unsigned bound, const char* what, const Variant& v, Operation operation) {
        const unsigned form = Below(3);
        return {bound, what,
                [=, this] {
                    return InSomeForm(
                        v, form, [&](const auto& named) { return operation(container_, named); });
                },
                [=, this] { return operation(model_, v); }};
    }
    template <class Search>
    static std::string FoundAt(Search&& search) {
        std::int32_t at = 77;
        const bool found = search(at);
        return (found ? "found @" : "missed @") + std::to_string(at);
    }

    // As if each were removed by itself.
    void EraseSome() {
        const unsigned rest = Below(12), step = 1 + Below(6);  // a step of 1: all, or none
        const auto goes = [=](const Text& key) {
            return !key.Empty() && key.Units().back() % step == rest % 3;
        };
        Do(
            "erase_if",
            [&] {
                return erase_if(container_,
                                [&](const KeyedEntry& entry) { return goes(entry.Key); });
            },
            [&] {
                const std::int32_t before = model_.count();
                for (std::int32_t at = 1; at <= model_.count();) {
                    if (goes(model_.at(at).key)) {
                        model_.Remove(at);
                    } else {
                        ++at;
                    }
                }
                return before - model_.count();
            });
    }

    Container container_;
    Model model_;

  private:
    Object& Ours() override { return container_; }

    std::optional<Variant> SomePlace() {
        if (Chance(80)) return std::nullopt;
        return Chance(5) ? Variant(std::int32_t{2147483647}) : SomeKeyOrPosition();
    }

    void Operate() override {
        const bool returnItem = Chance(50);
        const Variant v = SomeKeyOrPosition();
        const Text key = SomeKey();
        const Variant item = SomeItem();
        const unsigned choice = Below(100);
        if (choice < (model_.count() < target_ ? 45u : 20u)) {
            Add(item, key, returnItem);
        } else if (choice < 60) {
            Call("Remove", returnItem ? Arguments{v, true} : Arguments{v},
                 [&] { return model_.Remove(v, returnItem); });
        } else {
            OperateOnOne(v, key, item);
        }
        if (calm_ || !Chance(1)) return;
        target_ = Chance(20) ? 2 : static_cast<std::int32_t>(Below(universe_ / 3 + 22));
    }

    void Add(const Variant& item, const Text& key, bool returnItem) {
        const auto before = SomePlace();
        const auto after = SomePlace();
        const std::int32_t position = Chance(50) ? 0 : SomePosition();
        if (key.Empty() && !model_.sorted) return;  // a generated key is random
        Tell({item, key, before.value_or(u"-"), after.value_or(u"-"), position, returnItem});
        const AddOptions options{before, after, position, returnItem};
        DoChosen(0, {Both(1, "Add", [&](auto& c) { return c.Add(item, key, options); })});
    }

    void OperateOnOne(const Variant& v, const Text& key, const Variant& item) {
        const auto value = static_cast<std::int32_t>(Below(9));
        const std::int32_t position = SomePosition();
        if (calm_ && Below(500) == 0) {
            RemoveMany(static_cast<std::int32_t>(Below(700)));
            return Chance(50) ? EraseSome() : void();
        }
        if (!calm_ && Chance(2)) return Chance(50) ? AddSeveral(key, item) : EraseSome();
        const unsigned chosen = Below(calm_ && !Chance(2) ? 12 : 22);
        if (chosen < 2) return OperateSpecially(v, key);
        if (chosen > 15) return OperateOnSettings();
        if (chosen > 13) return SortBy();
        if (chosen == 13) return Chance(50) ? OperateOnItself() : LetGo(v, key, item);
        DoChosen(chosen, {{3, "Item", {v}, [&] { return model_.Item(v); }},
                          BothNamed(4, "SetItem", v,
                                    [=](auto& c, const auto& named) { c.SetItem(named, item); }),
                          {5, "ItemLong", {v}, [&] { return model_.ItemLong(v); }},
                          BothNamed(7, "SetItemLong and SetItemString", v,
                                    [=](auto& c, const auto& named) {
                                        if constexpr (requires { c.FindEntry(named); }) {
                                            if (auto found = c.FindEntry(named)) {
                                                found.SetItemLong(std::int64_t{value});
                                                return found.SetItemString(key);
                                            }
                                        }
                                        c.SetItemLong(named, value);
                                        c.SetItemString(named, key);
                                    }),
                          {8, "ItemString", {v}, [&] { return model_.ItemString(v); }},
                          {9, "Exists", {v}, [&] { return model_.resolve(v) != 0; }},
                          Both(10, "SetItemString", [&](auto& c) { c.SetItemString(v, key); }),
                          BothNamed(11, "FindItem, else ItemFn", v,
                                    [=](auto& c, const auto& named) {
                                        if constexpr (requires { c.FindItem(named); }) {
                                            if (const Variant* found = c.FindItem(named))
                                                return *found;
                                        }
                                        Variant got = u"untouched";
                                        if (c.ItemFn(named, got) || got != Variant(u"untouched"))
                                            return got;
                                        return c.Item(named);
                                    }),
                          {12, "Key", {position}, [&] { return model_.Key(position); }},
                          {13, "Sort", {}, [&] { return model_.Sort(); }}});
    }

    // Arguments that live in a record, which the look-up may move.
    void OperateOnItself() {
        if (container_.Count() == 0) return;
        const Variant& inside = *container_.begin();
        const Variant v = inside;
        const unsigned chosen = Below(3);
        const auto operate = [=](auto& c, const Variant& own) {
            if (chosen == 1) return c.Remove(own);
            if (chosen == 2) return c.Item(own);
            c.SetItem(own, own);
            return c.Item(v);  // a sort may have moved what was inside
        };
        DoAtOnce(
            "with itself", [&] { return operate(container_, inside); },
            [&] { return operate(model_, v); });
    }

    // Lets go of an object whose end comes back to the container.
    void LetGo(const Variant& v, const Text& key, const Variant& item) {
        if (container_.Count() == 0 || key.Empty()) return;
        const auto at = static_cast<std::int32_t>(1 + Below(unsigned(model_.count())));
        const unsigned chosen = Below(8), within = Below(8);
        const auto letGo = [=](auto& c) {
            if (chosen < 4) return c.Remove(at);
            chosen == 7 ? c.Clear() : c.SetItem(at, item);
            return Variant();
        };
        const auto comeBack = [=](auto& c) {
            if (within < 3) return c.Add(item, key, {});
            if (within < 5) return c.Remove(v);
            if (within == 5) return c.Sort(), Variant();
            if (within == 6) return c.SetItemLong(v, 7), Variant();
            return c.Clear(), Variant();
        };
        const auto back = [=](auto& c) { return OutcomeOf([&] { return comeBack(c); }); };
        DoAtOnce(
            "let go",
            [&] {
                std::string outcome = "never came";
                container_.SetItem(at,
                                   MakeObject<CountedObject>([&] { outcome = back(container_); }));
                const std::string done = OutcomeOf([&] { return letGo(container_); });
                return done + ", " + outcome;
            },
            [&] {
                model_.SetItem(at, item);
                const std::string done = OutcomeOf([&] { return letGo(model_); });
                return done + ", " + back(model_);
            });
    }

    void SortBy() {
        static const char* const kNames[] = {"key",  "Item",     "ITEMSTRING", "ItemLong",
                                             "Name", "HashCode", "hashindex"};
        const char* const name = kNames[Below(std::size(kNames))];
        const bool now = Chance(70);
        Call("SortBy", now ? Arguments{name, true} : Arguments{name},
             [&] { return model_.SortBy(name, now); });
    }

    // Neighbours, so that whole blocks of an order are emptied.
    void RemoveMany(std::int32_t many) {
        const std::int32_t at = SomePosition();
        const auto removeFrom = [=](auto& c) {
            std::int32_t removed = 0;
            for (std::int32_t i = 0; i < many; ++i) removed += c.Remove(at).ToLong() == at;
            return removed;
        };
        BothAtOnce("Remove many", container_, model_, removeFrom);
    }

    void AddSeveral(const Text& key, const Variant& item) {
        const Text other = SomeKey();
        if (key.Empty() || other.Empty()) return;
        DoAtOnce(
            "Add several",
            [&] {
                container_.Add({{key, item, 5, other}, {other, item}});
            },
            [&] {
                const Variant at = model_.Add(item, key, {});
                if (at.Type() != VarType::Long) model_.Add(item, key, {.ReturnItem = true});
                model_.at(at.ToLong()).itemLong = 5;
                model_.at(at.ToLong()).itemString = other;
                model_.Add(item, other, {.ReturnItem = true});
            });
    }

    void OperateOnSettings() {
        const bool flag = Chance(60);
        const unsigned chosen = Below(30);
        const auto step = static_cast<std::int32_t>(Chance(5) ? 40000 : Below(300));
        if (chosen == 9) return flag ? MoveAndBack() : Copy(Chance(50));
        if (chosen > 7 && Chance(80)) return;  // what changes most comes least
        if (chosen < 6) return ChangeBetweenLookUps(chosen, flag);
        DoChosen(chosen, {Both(7, "SetGranularity", [&](auto& c) { c.SetGranularity(step); }),
                          Both(8, "SetCompare", [&](auto& c) { c.SetCompare(1); }),
                          {9, "Clear", {}, [&] { model_.Clear(); }}});
    }

    // A look-up must not go by what the one in front of the change went by.
    void ChangeBetweenLookUps(unsigned chosen, bool flag) {
        const auto at = static_cast<std::int32_t>(Below(unsigned(model_.count()) + 1));
        const Text key = at == 0 ? Text("none") : model_.at(at).key;
        const auto look = [&](auto& c) { return OutcomeOf([&] { return c.Item(key); }); };
        BothAtOnce("change between look-ups", container_, model_, [&](auto& c) {
            if (chosen == 4) static_cast<void>(c.SortBy("itemstring", false));
            const std::string before = look(c);
            if (chosen < 2) c.SetSorted(flag);
            if (chosen == 2 || chosen == 3) c.SetDescending(flag);
            if (chosen == 4) static_cast<void>(c.Sort());
            if (chosen == 5) {
                c.SetUnique(flag);
                static_cast<void>(c.Add(-1, key, {}));
            }
            return before + ", " + look(c);
        });
    }

    // Something of the container may stay behind, or be another's then.
    void MoveAndBack() {
        const Text key = SomeKey();
        BothAtOnce("move and back", container_, model_, [&](auto& c) {
            auto taken = std::move(c);
            const std::string there = OutcomeOf([&] { return taken.Item(key); });
            const std::int32_t capacity = taken.Capacity();
            c = std::move(taken);
            return there + " " + std::to_string(capacity);
        });
    }

    void Copy(bool mark) {
        ScriptedSource source;
        const auto n = static_cast<std::int32_t>(Below(20));
        const std::int32_t steps[] = {static_cast<std::int32_t>(1 + Below(60)), INT32_MIN,
                                      INT32_MAX};
        source.Cells.push_back({Chance(50), static_cast<std::int32_t>(Below(3)), Chance(20),
                                steps[Chance(80) ? 0 : Below(3)], Chance(80), Chance(80)});
        for (std::int32_t i = 0; i < n; ++i) source.Cells.push_back(SourceRecord());
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
        if (Chance(10)) source.Cells[0][Below(6)] = u"neither a number nor a Boolean";
        DoAtOnce(
            "CopyFrom", [&] { container_.CopyFrom(source, mark); },
            [&] { model_.copyFrom(source.Cells, mark); });
    }

    std::string StateDiffers(bool last) override {
        if (!last && Number() % stateEvery_ != 0) return {};
        if (container_.Get(u"count") != Variant(model_.count())) return "Count differs";
        if (container_.Capacity() != model_.capacity) return "Capacity differs";
        const std::vector<Variant> settings = {model_.changed,    model_.compare,
                                               model_.descending, model_.granularity,
                                               model_.sorted,     model_.unique};
        static constexpr const char16_t* kSettings[] = {u"Changed",     u"Compare", u"Descending",
                                                        u"Granularity", u"Sorted",  u"Unique"};
        for (std::size_t i = 0; i < std::size(kSettings); ++i) {
            if (container_.Get(kSettings[i]) != settings[i]) return "a setting differs";
        }
        for (std::int32_t i = 0; i <= model_.count(); ++i) {
            std::vector<Variant> ours;
            std::vector<Variant> cells = i == 0 ? settings : ModelCells(i);
            cells.emplace_back();  // behind the last column there is nothing
            for (std::int32_t column = 1; column <= std::ssize(cells); ++column) {
                ours.push_back(container_.CopyItemValue(i, column));
            }
            if (ours == cells) continue;
            return "record " + std::to_string(i) + " is " + Joined(ours) + "not " + Joined(cells);
        }
        std::int32_t at = 0;
        for (const auto [key, item, itemLong, itemString] : container_.Entries()) {
            if (++at > model_.count()) return "a pass goes on";
            const auto& row = model_.at(at);
            const auto back = model_.count() + 1 - at;
            if (item != row.item || key != row.key || itemLong != row.itemLong ||
                itemString.Units() != row.itemString.Units() || container_.Item(at) != item ||
                &container_.begin()[at - 1] != &item || &*(container_.end() - back) != &item) {
                return "a pass differs at " + std::to_string(at);
            }
        }
        return at == model_.count() ? "" : "a pass ends early";
    }

    // A look-up may have sorted by key before memory ran out.
    std::string FailedStateDiffers() override {
        std::multiset<std::string> ours, models;
        for (std::int32_t i = 1; i <= container_.Count(); ++i) {
            ours.insert(Joined(std::array<Variant, 2>{container_.Key(i), container_.Item(i)}));
        }
        for (const auto& row : model_.rows) {
            models.insert(Joined(std::array<Variant, 2>{row.key, row.item}));
        }
        return ours == models ? "" : "the entries are others";
    }

    unsigned universe_;
    int stateEvery_;
    bool calm_, alike_;    // alike: mostly, four units tell nothing
    std::u16string lead_;  // that most keys share
    bool numbers_, crowded_;
    unsigned last_ = 0;
    std::int32_t target_;
};

}  // namespace zorvane
