#include <limits>

#include "tests/models/StepRun.h"
#include "tests/models/TableModel.h"
#include "zorvane/table/Table.h"

namespace zorvane {
namespace {

struct Nothing {};
using Owned = std::unique_ptr<int>;

template <class KeyType, class CityType, class Rest>
struct Person {
    KeyType Key;
    CityType City;
    int Born;
    double Owed;
    int Id;
    Rest More = {};
};

// What a person is made of, however often an operation is tried.
struct Drawn {
    unsigned Key, City;
    int Born;
    double Owed;
    int Id;
};

// Long enough to be allocated, alike at first, and some a beginning of others.
template <class T>
T Named(unsigned number) {
    if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(number) - 3;
    } else if (number % 16 == 15) {
        return T(std::string(number / 16 % 5, 'x'));
    } else {
        return T("of the same beginning " + std::to_string(number) +
                 std::string(number % 3 * 5, '\xC3'));
    }
}

// Any operations on a table of people in up to four orders and on its model, which is sorted anew
// whenever somebody asks.
template <class KeyType, class CityType, class Rest>
class Run : public StepRun {
    using Record = Person<KeyType, CityType, Rest>;
    using People = Table<Record, &Record::Key>;
    static constexpr bool kCopies = std::copy_constructible<Record>;

    // The value is made anew for every comparison, so that each may fail for want of memory.
    static constexpr auto kThird = [](const auto& person) {
        return std::string(20, 'a') + std::to_string(person.Born % 3);
    };
    struct Orders {
        typename People::template Order<CityType Record::*, Descending<int Record::*>> City;
        typename People::template Order<Descending<double Record::*>> Owed;
        typename People::template Order<decltype(kThird), KeyType Record::*> Third;
        typename People::template Order<int Record::*> Born;
    };
    static constexpr auto kByCity = [](const Record& a, const Record& b) {
        if (auto order = detail::CompareValues(a.City, b.City); order != 0) return order < 0;
        return a.Born > b.Born;
    };
    static constexpr auto kByOwed = [](const Record& a, const Record& b) {
        return detail::CompareValues(b.Owed, a.Owed) < 0;
    };
    static constexpr auto kByThird = [](const Record& a, const Record& b) {
        if (kThird(a) != kThird(b)) return kThird(a) < kThird(b);
        return detail::CompareValues(a.Key, b.Key) < 0;
    };
    static constexpr auto kByBorn = [](const Record& a, const Record& b) {
        return a.Born < b.Born;
    };

  public:
    explicit Run(std::uint32_t kind)
        : keys_(kind % 5 == 0   ? 3000
                : kind % 3 == 0 ? 400
                : kind % 4 == 0 ? 2
                                : 30) {}

  private:
    template <class Operation>
    Choice Both(unsigned bound, const char* what, Operation operation) {
        return OnEither(bound, what, people_, model_, operation);
    }
    Drawn SomeOne() {
        static constexpr double kOwed[] = {0.0, -0.0, 1.5, -2, 1e300, -1e300};
        const double owed = Below(9) == 0 ? std::numeric_limits<double>::quiet_NaN()
                                          : kOwed[Below(std::size(kOwed))];
        return {Below(keys_), Below(9), static_cast<int>(Below(12)) - 6, owed, Number()};
    }
    static Record Made(const Drawn& one) {
        Record record{Named<KeyType>(one.Key), Named<CityType>(one.City), one.Born, one.Owed,
                      one.Id};
        if constexpr (!kCopies) record.More = std::make_unique<int>(one.Id);
        return record;
    }
    static std::string Told(const std::pair<const Record*, bool>& added) {
        return std::to_string(added.first->Id) + (added.second ? " added" : " there");
    }

    void Operate() override {
        const Drawn one = SomeOne();
        const KeyType key = Named<KeyType>(Below(keys_));
        const unsigned chosen = Below(14);
        // Where there are many keys most of them are to come in.
        if (Chance(keys_ > 1000 ? 75 : 25)) return Add(one);
        if (chosen < 3) return TakeAway(key);
        if (chosen < 7) return Change(key, one);
        if (chosen < 9) return LookUp(key);
        if (chosen < 11) return Search(one);
        if (chosen == 11) return KeepOrDrop();
        chosen == 12 ? Merge() : ChangeAll();
    }

    void Add(const Drawn& one) {
        const auto insert = [=](auto& table) { return Told(table.insert(Made(one))); };
        const auto assign = [=](auto& table) { return Told(table.insert_or_assign(Made(one))); };
        const auto emplace = [=](auto& table) {
            const Record made = Made(one);
            return Told(table.try_emplace(made.Key, made.City, one.Born, one.Owed, one.Id));
        };
        DoChosen(Below(4), {Both(2, "insert", insert), Both(3, "insert_or_assign", assign),
                            Both(4, "try_emplace", emplace)});
    }

    void TakeAway(const KeyType& key) {
        const auto eraseAt = [=](auto& table) -> std::string {
            const auto at = table.position_of(key);
            if (!at) return "none";
            const auto next = table.erase(table.begin() + static_cast<int>(*at));
            return next == table.end() ? "the last" : std::to_string(next->Id);
        };
        const auto extract = [=](auto& table) {
            const auto taken = table.extract(key);
            return taken ? taken->Id : -1;
        };
        DoChosen(Below(3), {Both(1, "erase at", eraseAt), Both(3, "extract", extract)});
    }

    void Change(const KeyType& key, const Drawn& one) {
        const Record to = Made(one);
        const auto set = [&](unsigned bound, const char* what, auto column) {
            return Both(bound, what, [=, value = to.*column](auto& table) {
                return table.set(key, column, value);
            });
        };
        const unsigned chosen = Below(6);
        if (chosen > 3) return ChangeOrFail(key, one, chosen == 4);
        DoChosen(chosen, {set(1, "set City", &Record::City), set(2, "set Born", &Record::Born),
                          set(3, "set Owed", &Record::Owed),
                          Both(4, "set Key", [=, value = to.Key](auto& table) {
                              return table.set(table.find(key), &Record::Key, value);
                          })});
    }
    void ChangeOrFail(const KeyType& key, const Drawn& one, bool fails) {
        if constexpr (kCopies) {
            if (!fails) {
                const auto change = [=](Record& record) { record = Made(one); };
                return Both(1, "update", [=](auto& table) { return table.update(key, change); })
                    .Run(*this);
            }
        }
        BothAtOnce(fails ? "change that fails" : "own", people_, model_, [=](auto& table) {
            if (!fails) return table.update(key, &Record::More, [](Rest& own) { own = Rest(); });
            return table.update(key, &Record::City, [](CityType& city) {
                city = Named<CityType>(77);
                throw std::logic_error("failed");
            });
        });
    }

    void LookUp(const KeyType& key) {
        const std::size_t position = Below(static_cast<unsigned>(model_.size()) + 1);
        const auto nth = [=](auto& table) { return table.nth(position).Id; };
        const auto at = [=](auto& table) {
            const auto place = table.position_of(key);
            const Record& found = table.at(detail::Plain(key));
            return std::to_string(found.Id) + " " + std::to_string(*place);
        };
        DoChosen(Below(2), {Both(1, "at", at), Both(2, "nth", nth)});
    }

    template <class Order, class Less, class Has, class... Values>
    void Search(const Order& order, Less less, Has has, const Values&... values) {
        if (!order) return;
        const auto sorted = model_.Sorted(less);
        const auto first = std::ranges::find_if(sorted, has);
        const auto count = std::ranges::count_if(sorted, has);
        Do(
            "equal_range",
            [&] {
                const auto range = order.equal_range(values...);
                const auto* const found = order.find(values...);
                std::string told = std::to_string(range.size()) + " " +
                                   std::to_string(order.count(values...)) + " " +
                                   std::to_string(found ? found->Id : -1);
                // Where there are none, the place between.
                const auto at = static_cast<std::size_t>(range.begin() - order.begin());
                if (!range.empty()) return told + " " + std::to_string(at);
                return told + (at < order.size() || at == sorted.size() ? "" : " outside");
            },
            [&] {
                const std::string times = std::to_string(count) + " ";
                return times + times + std::to_string(count == 0 ? -1 : (*first)->Id) +
                       (count == 0 ? "" : " " + std::to_string(first - sorted.begin()));
            });
    }
    void Search(const Drawn& one) {
        const CityType city = Named<CityType>(one.City);
        const auto sameCity = [&](const Record* record) { return record->City == city; };
        const auto sameBorn = [&](const Record* record) { return record->Born == one.Born; };
        const auto sameCityAndBorn = [&](auto* record) {
            return sameCity(record) && sameBorn(record);
        };
        const auto sameOwed = [&](const Record* record) {
            return detail::CompareValues(record->Owed, one.Owed) == 0;
        };
        const unsigned which = Below(4);
        if (which == 0) return Search(orders_.City, kByCity, sameCity, detail::Plain(city));
        if (which == 1)
            return Search(orders_.City, kByCity, sameCityAndBorn, city,
                          static_cast<std::int64_t>(one.Born));
        if (which == 2) return Search(orders_.Owed, kByOwed, sameOwed, one.Owed);
        Search(orders_.Born, kByBorn, sameBorn, one.Born);
    }

    template <class Order, class... Columns>
    void KeepOrDrop(Order& order, Columns... columns) {
        const bool drops = order && Below(3) == 0;
        Do(
            drops ? "drop" : "order",
            [&] {
                if (drops) {
                    people_.drop(order);
                } else {
                    order = people_.order(columns...);
                }
                return (order ? "kept " : "gone ") + std::to_string(order.size());
            },
            [&] { return drops ? "gone 0" : "kept " + std::to_string(model_.size()); });
    }
    void KeepOrDrop() {
        const unsigned which = Below(4);
        if (which == 0) return KeepOrDrop(orders_.City, &Record::City, descending(&Record::Born));
        if (which == 1) return KeepOrDrop(orders_.Owed, descending(&Record::Owed));
        if (which == 2) return KeepOrDrop(orders_.Third, kThird, &Record::Key);
        KeepOrDrop(orders_.Born, &Record::Born);
    }

    // What was moved over before memory ran out stays here.
    void Merge() {
        std::vector<Drawn> come(Below(6));
        for (Drawn& one : come) one = SomeOne();
        BothAtOnce("merge", people_, model_, [&]<class T>(T& table) {
            T other;
            for (const Drawn& one : come) other.insert(Made(one));
            table.merge(other);
            std::string left;
            for (const Record& record : other) left += std::to_string(record.Id) + " ";
            return left;
        });
    }

    void ChangeAll() {
        const int modulus = static_cast<int>(2 + Below(keys_ > 1000 ? 40 : 4));
        const auto goes = [=](const Record& record) { return record.Id % modulus == 0; };
        const auto reserve = [](auto& table) { table.reserve(table.size() * 2); };
        const auto moveAndBack = []<class T>(T& table) {
            T taken(std::move(table));
            const std::size_t left = table.size();
            table.swap(taken);
            return left;
        };
        const auto copyIt = []<class T>(T& table) {
            T copy;
            if constexpr (kCopies) copy = table;
            return !kCopies || std::ranges::equal(copy, table, IsSame);
        };
        const auto eraseIf = [=](auto& table) { return table.erase_if(goes); };
        if (Chance(1)) return BothAtOnce("clear", people_, model_, [](auto& t) { t.clear(); });
        DoChosen(Below(8), {Both(1, "reserve", reserve), Both(2, "move and back", moveAndBack),
                            Both(3, "copy", copyIt), Both(8, "erase_if", eraseIf)});
    }

    static bool IsSame(const Record& one, const Record& other) {
        return one.Id == other.Id && one.Key == other.Key && one.City == other.City &&
               one.Born == other.Born && detail::CompareValues(one.Owed, other.Owed) == 0;
    }
    template <class Order, class Less>
    bool IsOther(const Order& order, Less less) const {
        if (!order) return !order.empty();
        const auto sorted = model_.Sorted(less);
        const auto isSame = [](const Record& one, const Record* other) {
            return IsSame(one, *other);
        };
        if (!std::ranges::equal(order, sorted, isSame)) return true;
        if (!sorted.empty() && &order.front() != &order[0]) return true;
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            if (order.rank_of(sorted[i]->Key) != i || order[i].Id != sorted[i]->Id) return true;
        }
        return false;
    }
    std::string StateDiffers(bool last) override {
        if (!last && model_.size() > 100 && Number() % 64 != 0) return "";
        if (people_.size() != model_.size()) return "the size differs";
        if (!std::ranges::equal(people_, model_, IsSame)) return "the records differ";
        for (const Record& record : model_) {
            const Record* const found = people_.find(record.Key);
            if (!found || !IsSame(*found, record)) return "a key is not found";
        }
        if (IsOther(orders_.City, kByCity)) return "the order by city differs";
        if (IsOther(orders_.Owed, kByOwed)) return "the order by what is owed differs";
        if (IsOther(orders_.Third, kByThird)) return "the order by thirds differs";
        if (IsOther(orders_.Born, kByBorn)) return "the order by age differs";
        return "";
    }
    // Each allocation of each operation is followed by this one.
    std::string FailedStateDiffers() override { return StateDiffers(model_.size() < 100); }

    unsigned keys_;
    People people_;
    Orders orders_;
    TableModel<Record> model_;
};

}  // namespace

std::unique_ptr<StepRun> StartTable(std::uint32_t kind) {
    const std::uint32_t types = kind / 2 % 3;
    if (types == 0) return std::make_unique<Run<std::string, std::string, Owned>>(kind);
    if (types == 1) return std::make_unique<Run<Text, std::string, Nothing>>(kind);
    return std::make_unique<Run<int, int, Nothing>>(kind);
}

}  // namespace zorvane
