#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/models/StepRun.h"
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

// Long enough to be allocated, alike at first, and some a beginning of others.
template <class T>
T Named(unsigned number) {
    if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(number) - 3;
    } else if (number % 16 == 15) {
        return T(std::string(number / 16 % 5, 'x'));
    } else {
        return T("of the same beginning " + std::to_string(number) +
                 std::string(number % 3, '\xC3'));
    }
}

// Any operations on a table of people in up to four orders and on a vector that is searched from
// its beginning and sorted anew whenever somebody asks.
template <class KeyType, class CityType, class Rest>
class Run : public StepRun {
    using Record = Person<KeyType, CityType, Rest>;
    using People = Table<Record, &Record::Key>;
    struct Row {
        KeyType Key;
        CityType City;
        int Born;
        double Owed;
        int Id;
    };
    using Rows = std::vector<Row>;
    static constexpr bool kCopies = std::copy_constructible<Record>;

    static constexpr auto kByCity = [](const Row& a, const Row& b) {
        if (auto order = detail::CompareValues(a.City, b.City); order != 0) return order < 0;
        return a.Born > b.Born;
    };
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

  public:
    explicit Run(std::uint32_t kind) : keys_(kind % 5 == 0 ? 3000 : kind % 3 == 0 ? 400 : 30) {}

  private:
    void Operate() override {
        const unsigned chosen = Below(100);
        // Where there are many keys most of them are to come in.
        const unsigned adding = keys_ > 1000 ? 75 : 25;
        if (chosen < adding) return Add();
        switch (Below(14)) {
            case 0:
            case 1:
            case 2:
                return TakeAway();
            case 3:
            case 4:
            case 5:
            case 6:
                return ChangeOne();
            case 7:
                return KeepOrDrop();
            case 8:
            case 9:
                return LookUp();
            case 10:
            case 11:
                return SearchOrders();
            case 12:
                return Merge();
            default:
                return ChangeAll();
        }
    }

    Row AnyRow() {
        static constexpr double kOwed[] = {0.0, -0.0, 1.5, -2, 1e300, -1e300};
        const double owed = Below(9) == 0 ? std::numeric_limits<double>::quiet_NaN()
                                          : kOwed[Below(std::size(kOwed))];
        return {AnyKey(), Named<CityType>(Below(9)), static_cast<int>(Below(12)) - 6, owed,
                Number()};
    }
    KeyType AnyKey() { return Named<KeyType>(Below(keys_)); }
    static Record Made(const Row& row) {
        Record record{row.Key, row.City, row.Born, row.Owed, row.Id, {}};
        if constexpr (!kCopies) record.More = std::make_unique<int>(row.Id);
        return record;
    }
    static auto Find(Rows& rows, const KeyType& key) {
        return std::ranges::find(rows, key, &Row::Key);
    }
    // What an operation that may throw has to say.
    using Operation = std::function<std::string()>;
    static std::string Said(const Operation& operation) {
        try {
            return operation();
        } catch (const std::logic_error& error) {
            return error.what();
        }
    }
    void Try(const char* what, const Operation& operation, const Operation& model) {
        Do(
            what, [&] { return Said(operation); }, model);
    }
    void TryAtOnce(const char* what, const Operation& operation, const Operation& model) {
        DoAtOnce(
            what, [&] { return Said(operation); }, model);
    }
    static std::string Told(const typename People::Added& added) {
        return std::to_string(added.first->Id) + (added.second ? " added" : " there");
    }
    static std::string InUse(const KeyType& key) {
        return "another record has the key " + detail::KeyWords(key);
    }

    void Add() {
        const Row row = AnyRow();
        const auto found = Find(rows_, row.Key);
        const bool isNew = found == rows_.end();
        const auto model = [=, this] {
            if (isNew) rows_.push_back(row);
            return std::to_string(isNew ? row.Id : found->Id) + (isNew ? " added" : " there");
        };
        switch (Below(4)) {
            case 0:
                return Try(
                    "insert_or_assign",
                    [=, this] { return Told(people_.insert_or_assign(Made(row))); },
                    [=, this] {
                        if (!isNew) *found = row;
                        return isNew ? model() : std::to_string(row.Id) + " there";
                    });
            case 1:
                return Try(
                    "try_emplace",
                    [=, this] {
                        return Told(
                            people_.try_emplace(row.Key, row.City, row.Born, row.Owed, row.Id));
                    },
                    model);
            default:
                return Try(
                    "insert", [=, this] { return Told(people_.insert(Made(row))); }, model);
        }
    }

    void TakeAway() {
        const KeyType key = AnyKey();
        const auto found = Find(rows_, key);
        const auto model = [=, this] {
            const std::string told = found == rows_.end() ? "none" : std::to_string(found->Id);
            if (found != rows_.end()) rows_.erase(found);
            return told;
        };
        if (Below(3) == 0) {
            Try(
                "erase at",
                [=, this]() -> std::string {
                    const auto position = people_.position_of(key);
                    if (!position) return "none";
                    const auto at = people_.begin() + static_cast<std::ptrdiff_t>(*position);
                    const std::string told = std::to_string(at->Id);
                    const auto next = people_.erase(at);
                    const bool follows = *position == people_.size()
                                             ? next == people_.end()
                                             : &*next == &people_.nth(*position);
                    return follows ? told : "not the next";
                },
                model);
        } else {
            Try(
                "extract",
                [=, this]() -> std::string {
                    const auto taken = people_.extract(key);
                    return taken ? std::to_string(taken->Id) : "none";
                },
                model);
        }
    }

    void ChangeOne() {
        const Row to = AnyRow();
        const KeyType key = AnyKey();
        const auto found = Find(rows_, key);
        const bool isThere = found != rows_.end();
        const auto other = Find(rows_, to.Key);
        const auto change = [=, this](const char* what, auto column, auto rowColumn) {
            const auto value = to.*rowColumn;
            Try(
                what, [=, this] { return people_.set(key, column, value) ? "yes" : "no"; },
                [=] {
                    if (isThere) (*found).*rowColumn = value;
                    return isThere ? "yes" : "no";
                });
        };
        const auto changeKey = [=, this](auto&& ours) {
            Try("key", ours, [=, this]() -> std::string {
                if (!isThere) return "no";
                if (other != rows_.end() && other != found) return InUse(to.Key);
                found->Key = to.Key;
                return "yes";
            });
        };
        switch (Below(6)) {
            case 0:
                return change("set City", &Record::City, &Row::City);
            case 1:
                return change("set Born", &Record::Born, &Row::Born);
            case 2:
                return change("set Owed", &Record::Owed, &Row::Owed);
            case 3:
                return changeKey([=, this] {
                    return people_.set(people_.find(key), &Record::Key, to.Key) ? "yes" : "no";
                });
            case 4:
                return TryAtOnce(
                    "change that fails",
                    [=, this] {
                        return people_.update(key, &Record::City,
                                              [](CityType& city) {
                                                  city = Named<CityType>(77);
                                                  throw std::logic_error("failed");
                                              })
                                   ? "yes"
                                   : "no";
                    },
                    // A column that nobody looks at is changed where it lies.
                    [=, this] {
                        if (isThere && !orders_.City && !orders_.Third)
                            found->City = Named<CityType>(77);
                        return isThere ? "failed" : "no";
                    });
            default:
                if constexpr (kCopies) {
                    return Try(
                        "update",
                        [=, this] {
                            return people_.update(key, [&](Record& record) { record = Made(to); })
                                       ? "yes"
                                       : "no";
                        },
                        [=, this]() -> std::string {
                            if (!isThere) return "no";
                            if (other != rows_.end() && other != found) return InUse(to.Key);
                            *found = to;
                            return "yes";
                        });
                } else {
                    return TryAtOnce(
                        "own",
                        [=, this] {
                            const auto end = [](Owned& own) { own.reset(); };
                            return people_.update(key, &Record::More, end) ? "yes" : "no";
                        },
                        [=] { return isThere ? "yes" : "no"; });
                }
        }
    }

    template <class Order, class... Columns>
    void KeepOrDrop(Order Orders::*order, Columns... columns) {
        const bool drops = static_cast<bool>(orders_.*order) && Below(3) == 0;
        Try(
            drops ? "drop" : "order",
            [=, this] {
                if (drops) {
                    people_.drop(orders_.*order);
                } else {
                    orders_.*order = people_.order(columns...);
                }
                return (orders_.*order ? "kept " : "gone ") +
                       std::to_string((orders_.*order).size());
            },
            [=, this] {
                return drops ? std::string("gone 0") : "kept " + std::to_string(rows_.size());
            });
    }
    void KeepOrDrop() {
        switch (Below(4)) {
            case 0:
                return KeepOrDrop(&Orders::City, &Record::City, descending(&Record::Born));
            case 1:
                return KeepOrDrop(&Orders::Owed, descending(&Record::Owed));
            case 2:
                return KeepOrDrop(&Orders::Third, kThird, &Record::Key);
            default:
                return KeepOrDrop(&Orders::Born, &Record::Born);
        }
    }

    void LookUp() {
        const KeyType key = AnyKey();
        const auto found = Find(rows_, key);
        const auto place = static_cast<std::size_t>(found - rows_.begin());
        const std::size_t position = Below(static_cast<unsigned>(rows_.size()) + 1);
        Try(
            "at",
            [=, this] {
                const auto at = people_.position_of(key);
                return std::to_string(people_.at(detail::Plain(key)).Id) + " " +
                       std::to_string(at.value_or(people_.size()));
            },
            [=, this] {
                return found == rows_.end()
                           ? "no record has the key " + detail::KeyWords(key)
                           : std::to_string(found->Id) + " " + std::to_string(place);
            });
        Try(
            "nth", [=, this] { return std::to_string(people_.nth(position).Id); },
            [=, this] {
                return position == rows_.size() ? "position " + std::to_string(position) + " of " +
                                                      std::to_string(position) + " records"
                                                : std::to_string(rows_[position].Id);
            });
    }

    template <class Order, class Less, class Has, class... Values>
    void Search(const char* what, const Order& order, Less less, Has has, const Values&... values) {
        if (!order) return;
        const Rows sorted = Sorted(less);
        const auto first = std::ranges::find_if(sorted, has);
        const auto count = std::ranges::count_if(sorted, has);
        Try(
            what,
            [&] {
                const auto range = order.equal_range(values...);
                const auto* const found = order.find(values...);
                std::string told = std::to_string(range.size()) + " " +
                                   std::to_string(order.count(values...)) + " " +
                                   std::to_string(found ? found->Id : -1);
                // Where there are none, the place between.
                const auto at = static_cast<std::size_t>(range.begin() - order.begin());
                if (range.empty()) {
                    told += at < order.size() || at == sorted.size() ? "" : " outside";
                } else {
                    told += " " + std::to_string(at);
                }
                return told;
            },
            [&] {
                const std::string times = std::to_string(count) + " ";
                return times + times + std::to_string(first == sorted.end() ? -1 : first->Id) +
                       (count == 0 ? "" : " " + std::to_string(first - sorted.begin()));
            });
    }
    void SearchOrders() {
        const Row asked = AnyRow();
        const auto sameCity = [=](const Row& row) {
            return detail::CompareValues(row.City, asked.City) == 0;
        };
        switch (Below(4)) {
            case 0:
                return Search("equal_range City", orders_.City, kByCity, sameCity,
                              detail::Plain(asked.City));
            case 1:
                return Search(
                    "equal_range City and Born", orders_.City, kByCity,
                    [=](const Row& row) { return sameCity(row) && row.Born == asked.Born; },
                    asked.City, static_cast<std::int64_t>(asked.Born));
            case 2:
                return Search(
                    "equal_range Owed", orders_.Owed, kByOwed,
                    [=](const Row& row) {
                        return detail::CompareValues(row.Owed, asked.Owed) == 0;
                    },
                    asked.Owed);
            default:
                return Search(
                    "equal_range Born", orders_.Born, kByBorn,
                    [=](const Row& row) { return row.Born == asked.Born; }, asked.Born);
        }
    }

    void Merge() {
        Rows comes;
        for (unsigned i = Below(6); i != 0; --i) {
            const Row row = AnyRow();
            if (Find(comes, row.Key) == comes.end()) comes.push_back(row);
        }
        // What was moved over before memory ran out stays here.
        TryAtOnce(
            "merge",
            [&] {
                People other;
                for (const Row& row : comes) other.insert(Made(row));
                people_.merge(other);
                std::string left;
                for (const Record& record : other) left += std::to_string(record.Id) + " ";
                return left;
            },
            [&] {
                std::string left;
                for (const Row& row : comes) {
                    if (Find(rows_, row.Key) == rows_.end()) {
                        rows_.push_back(row);
                    } else {
                        left += std::to_string(row.Id) + " ";
                    }
                }
                return left;
            });
    }

    void ChangeAll() {
        const unsigned modulus = 1 + Below(keys_ > 1000 ? 40 : 4);
        switch (Below(8)) {
            case 0:
                return Try(
                    "reserve", [&] { return people_.reserve(people_.size() * 2), ""; },
                    [] { return ""; });
            case 1:
                return Try(
                    "move and back",
                    [&] {
                        People taken(std::move(people_));
                        const std::string told = std::to_string(people_.size());
                        people_.swap(taken);
                        return told;
                    },
                    [] { return "0"; });
            case 2:
                if (Below(10) != 0) return;
                return Try(
                    "clear", [&] { return people_.clear(), ""; },
                    [&] { return rows_.clear(), ""; });
            case 3:
                if constexpr (kCopies) {
                    return Try(
                        "copy",
                        [&] {
                            const People copy(people_);
                            return std::ranges::equal(copy, people_, {}, &Record::Id, &Record::Id)
                                       ? "same"
                                       : "other";
                        },
                        [] { return "same"; });
                }
                [[fallthrough]];
            default:
                return Try(
                    "erase_if",
                    [=, this] {
                        return std::to_string(people_.erase_if([=](const Record& record) {
                            return static_cast<unsigned>(record.Id) % (modulus + 1) == 0;
                        }));
                    },
                    [=, this] {
                        return std::to_string(std::erase_if(rows_, [=](const Row& row) {
                            return static_cast<unsigned>(row.Id) % (modulus + 1) == 0;
                        }));
                    });
        }
    }

    static constexpr auto kByOwed = [](const Row& a, const Row& b) {
        return detail::CompareValues(b.Owed, a.Owed) < 0;
    };
    static constexpr auto kByBorn = [](const Row& a, const Row& b) { return a.Born < b.Born; };
    static constexpr auto kByThird = [](const Row& a, const Row& b) {
        if (kThird(a) != kThird(b)) return kThird(a) < kThird(b);
        return detail::CompareValues(a.Key, b.Key) < 0;
    };
    template <class Less>
    Rows Sorted(Less less) const {
        Rows sorted = rows_;
        std::ranges::stable_sort(sorted, less);
        return sorted;
    }
    static bool IsSame(const Record& record, const Row& row) {
        return record.Id == row.Id && record.Key == row.Key && record.City == row.City &&
               record.Born == row.Born && detail::CompareValues(record.Owed, row.Owed) == 0;
    }
    template <class Order, class Less>
    bool IsOther(const Order& order, Less less) const {
        if (!order) return !order.empty();
        const Rows sorted = Sorted(less);
        if (!std::ranges::equal(order, sorted, IsSame)) return true;
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            if (order.rank_of(sorted[i].Key) != i || order[i].Id != sorted[i].Id) return true;
        }
        return false;
    }
    std::string StateDiffers(bool last) override {
        if (!last && rows_.size() > 100 && Number() % 64 != 0) return "";
        if (people_.size() != rows_.size()) return "the size differs";
        if (!std::ranges::equal(people_, rows_, IsSame)) return "the records differ";
        for (const Row& row : rows_) {
            const Record* const found = people_.find(row.Key);
            if (!found || !IsSame(*found, row)) return "a key is not found";
        }
        if (IsOther(orders_.City, kByCity)) return "the order by city differs";
        if (IsOther(orders_.Owed, kByOwed)) return "the order by what is owed differs";
        if (IsOther(orders_.Third, kByThird)) return "the order by thirds differs";
        if (IsOther(orders_.Born, kByBorn)) return "the order by age differs";
        return "";
    }
    // Each allocation of each operation is followed by this one.
    std::string FailedStateDiffers() override { return StateDiffers(rows_.size() < 100); }

    unsigned keys_;
    People people_;
    Orders orders_;
    Rows rows_;
};

}  // namespace

std::unique_ptr<StepRun> StartTable(std::uint32_t kind) {
    switch (kind / 2 % 3) {
        case 0:
            return std::make_unique<Run<std::string, std::string, Owned>>(kind);
        case 1:
            return std::make_unique<Run<Text, std::string, Nothing>>(kind);
        default:
            return std::make_unique<Run<int, int, Nothing>>(kind);
    }
}

}  // namespace zorvane
