// Sorts of the containers by every column against std::sort on a user's struct: usage: bench_sorts
// [greatest size [results]]
//
// One run, taking turns; lower quartiles; the ratio of our time to std::sort's. The containers'
// sort moves records and rebuilds the index; std::sort moves structs of the same fields.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/Data.h"
#include "bench/Measure.h"
#include "zorvane/collection/ZVCollectionEx.h"
#include "zorvane/keylist/KeyListEX.h"

namespace {

using namespace bench;
using zorvane::Text;
using zorvane::Variant;

struct User {
    std::u16string key;
    Value item;
    std::int32_t number = 0;
    std::u16string text;
};

enum class Column { Key, ItemString, ItemLong, ItemLongWithTies, Item };

struct SortRow {
    Column column;
    const char* label;
    const char16_t* name;
};
constexpr SortRow kRows[] = {{Column::Key, "key", u"key"},
                             {Column::ItemString, "itemstring", u"itemstring"},
                             {Column::ItemLong, "itemlong", u"itemlong"},
                             {Column::ItemLongWithTies, "itemlong, ties", u"itemlong"},
                             {Column::Item, "item", u"item"}};

std::int32_t NumberOf(const Data& data, std::size_t i, Column column) {
    return column == Column::ItemLongWithTies ? data.values[i] % 1000 : data.values[i];
}

template <class Container>
double SortOurs(const Data& data, const Data& other, const SortRow& row) {
    Container container;
    container.SetSorted(false);
    for (std::size_t i = 0; i < data.keys.size(); ++i) {
        container.Add(other.values[i], Text(data.keys[i]));
        const auto position = static_cast<std::int32_t>(i) + 1;
        container.SetItemLong(position, NumberOf(data, i, row.column));
        container.SetItemString(position, Text(other.keys[i]));
    }
    const auto from = Clock::now();
    container.SortBy(row.name, true);
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

double SortUsers(const Data& data, const Data& other, const SortRow& row) {
    std::vector<User> users(data.keys.size());
    for (std::size_t i = 0; i < users.size(); ++i) {
        users[i] = {data.keys[i], other.values[i], NumberOf(data, i, row.column), other.keys[i]};
    }
    const auto from = Clock::now();
    std::sort(users.begin(), users.end(), [&](const User& a, const User& b) {
        switch (row.column) {
            case Column::Key:
                return a.key < b.key;
            case Column::ItemString:
                return a.text < b.text;
            case Column::Item:
                return std::to_string(toInt(a.item)) < std::to_string(toInt(b.item));
            default:
                return a.number < b.number;
        }
    });
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

}  // namespace

int main(int argc, char** argv) {
    const std::size_t greatest = argc > 1 ? std::stoul(argv[1]) : 1000000;
    Results results(argc > 2 ? argv[2] : "");
    for (const std::size_t n :
         {std::size_t{1000}, std::size_t{10000}, std::size_t{100000}, std::size_t{1000000}}) {
        if (n > greatest) break;
        const Data data = makeData(n, true, 7);
        const Data other = makeData(n, true, 8);
        const int repeats = n <= 10000 ? 15 : n <= 100000 ? 5 : 3;
        std::printf("\n%zu records, ms (lower quartile of %d)\n%-16s%14s%16s%14s%10s%10s\n", n,
                    repeats, "column", "KeyListEX", "ZVCollectionEx", "std::sort", "ratio",
                    "ratio");
        for (const SortRow& row : kRows) {
            std::vector<double> list;
            std::vector<double> collection;
            std::vector<double> users;
            for (int i = 0; i < repeats; ++i) {
                list.push_back(SortOurs<zorvane::KeyListEX>(data, other, row));
                collection.push_back(SortOurs<zorvane::ZVCollectionEx>(data, other, row));
                users.push_back(SortUsers(data, other, row));
            }
            const double peer = typical(users);
            std::printf("%-16s%14.3f%16.3f%14.3f%10.2f%10.2f\n", row.label, typical(list),
                        typical(collection), peer, typical(list) / peer,
                        typical(collection) / peer);
            std::fflush(stdout);
            const auto add = [&](const char* name, double milliseconds) {
                results.Add("sort", name, n, row.label, "sort", milliseconds * 1e6);
            };
            add("KeyListEX", typical(list));
            add("ZVCollectionEx", typical(collection));
            add("std::sort", peer);
        }
    }
    return 0;
}
