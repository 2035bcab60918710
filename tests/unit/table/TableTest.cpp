#include "zorvane/table/Table.h"

#include <cctype>

#include "tests/support/AllocationFaults.h"
#include "tests/support/Testing.h"

namespace zorvane {
namespace {

struct City {
    std::string Name;
    std::int16_t Code = 0;
};
using Cities = Table<City, &City::Name>;
using Order = Cities::Order<std::int16_t City::*>;
static_assert(std::random_access_iterator<Cities::iterator>);
static_assert(std::ranges::random_access_range<Order> && std::ranges::sized_range<Order>);
static_assert(std::ranges::view<Order> && std::ranges::borrowed_range<Order>);

// Catches a look-up that makes a key of what it is asked with.
TEST(Table_Find, AViewOrALiteralFindsAKeyWithoutAnAllocation) {
    const Cities cities = {{"a name that no short text holds", 1}};
    const Table<Text, std::identity{}> texts = {u"a name that no short text holds"};
    const std::int64_t before = AllocationCount();
    EXPECT_NE(cities.find("a name that no short text holds"), nullptr);
    EXPECT_FALSE(cities.contains(std::string_view("a name that no short text holds, but longer")));
    EXPECT_TRUE(texts.contains(std::u16string_view(u"a name that no short text holds")));
    EXPECT_EQ(AllocationCount(), before);
}

// Catches a number that is cut to the key's width or to a whole one, and a sign that is lost.
TEST(Table_Find, ANumberIsLookedUpByItsValue) {
    const Table<City, &City::Code> cities = {{"one", 1}, {"minus one", -1}};
    EXPECT_EQ(cities.at(std::uint64_t{1}).Name, "one");
    EXPECT_FALSE(cities.contains(65537));
    EXPECT_FALSE(cities.contains(std::uint16_t{65535}));
    EXPECT_TRUE(cities.contains(-1.0f));
    for (const double none : {1.5, 65537.0, 1e300, -1e300, std::nan("")})
        EXPECT_FALSE(cities.contains(none)) << none;

    constexpr std::int64_t kFew = std::int64_t{1} << 53;  // a double tells no others apart
    Table<std::int64_t, std::identity{}> numbers = {kFew + 1, kFew, kFew - 1, -1, INT64_MAX};
    const auto order = numbers.order(std::identity{});
    const double few = static_cast<double>(kFew);
    EXPECT_EQ(order.equal_range(few).size(), 1u);
    EXPECT_EQ(order.lower_bound(few) - order.begin(), 2);
    EXPECT_EQ(order.upper_bound(-0.5) - order.begin(), 1);
    EXPECT_EQ(order.upper_bound(0x1p63) - order.begin(), 5);
    EXPECT_EQ(order.lower_bound(-INFINITY) - order.begin(), 0);
    const Table<float, std::identity{}> reals = {-INFINITY, 1.5f};
    EXPECT_TRUE(reals.contains(-double{INFINITY}) && !reals.contains(-1e300));
    const Table<char, std::identity{}> letters = {static_cast<char>(-1), 'b'};
    EXPECT_TRUE(letters.contains(98u) && !letters.contains(255u + 98u));
}

// Catches a refused record that is lost, a record that lies elsewhere taken for one of these, a
// table that merges itself away, and a number or position that is cut.
TEST(Table_Insert, WhatIsRefusedIsNotTaken) {
    Cities cities = {{"one", 1}};
    City two{"one", 2};
    EXPECT_FALSE(cities.insert(std::move(two)).second);
    EXPECT_EQ(two.Name, "one");
    EXPECT_FALSE(cities.set(&two, &City::Code, std::int16_t{3}));
    cities.merge(cities);
    EXPECT_EQ(cities.size(), 1u);
    EXPECT_THROW(cities.reserve(SIZE_MAX), std::length_error);
    EXPECT_THROW(cities.erase(cities.end()), std::out_of_range);
}

// Catches an error that needs words for a key that has none.
TEST(Table_At, AKeyThatCannotBeShownIsRefusedAllTheSame) {
    struct Place {
        std::optional<int> Is;
    };
    Table<Place, &Place::Is> places = {Place{1}, Place{2}};
    EXPECT_THROW(places.set(std::optional(1), &Place::Is, std::optional(2)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(places.at(std::optional(3))), std::out_of_range);
}

// Catches a key that stays where it was when what it is worked out from changes.
TEST(Table_Set, AKeyThatIsWorkedOutFollowsWhatItIsMadeFrom) {
    Table<City, [](const City& city) { return 2 * city.Code; }> cities = {{"one", 1}};
    EXPECT_TRUE(cities.set(2, &City::Code, std::int16_t{5}));
    EXPECT_TRUE(cities.contains(10) && !cities.contains(2));
}

// A number with a sign of its own, that only its own operators compare.
struct Owed {
    int Amount;
    friend auto operator<=>(Owed left, Owed right) { return right.Amount <=> left.Amount; }
    friend auto operator<=>(Owed left, int right) { return right <=> left.Amount; }
};

// Catches a small value taken for its bits, and a direction that names another order.
TEST(Table_Order, AValueWithOperatorsOfItsOwnStandsAndIsFoundByThem) {
    struct Account {
        int Number;
        Owed Debt;
        Owed Limit;
    };
    Table<Account, &Account::Number> accounts = {{1, {5}, {1}}, {2, {-7}, {2}}, {3, {2}, {3}}};
    const auto most = accounts.order(&Account::Debt);
    EXPECT_EQ(most.begin(), accounts.order(&Account::Debt).begin());
    EXPECT_EQ(most[0].Number, 1);
    EXPECT_EQ(most.lower_bound(3)->Number, 3);
    const auto least = accounts.order(descending(&Account::Limit));
    EXPECT_EQ(accounts.order(descending(&Account::Debt))[0].Number, 2);
    EXPECT_EQ(least[0].Number, 1);
}

// Catches an own hash or equality that is passed by.
TEST(Table_Find, AHashAndAnEqualityOfOnesOwnDecide) {
    struct Hash {
        std::size_t operator()(const std::string& key) const { return key.size(); }
    };
    struct Equal {
        bool operator()(const std::string& a, const std::string& b) const {
            const auto lower = [](char letter) { return std::tolower(letter); };
            return std::ranges::equal(a, b, {}, lower, lower);
        }
    };
    Table<City, &City::Name, Hash, Equal> cities;
    cities.insert({"Rome", 1});
    EXPECT_FALSE(cities.insert({"ROME", 2}).second);
    EXPECT_EQ(cities.at("rome").Code, 1);
    EXPECT_TRUE(cities.set("rome", &City::Name, "ROME"));
    EXPECT_EQ(cities.nth(0).Name, "ROME");
}

// Catches an order whose table of blocks grows with every number that was ever given out.
TEST(Table_Erase, AQueueKeepsItsOrdersAndItsMemory) {
    Table<int, std::identity{}> queue;
    const auto order = queue.order(descending(std::identity{}));
    for (int i = 0; i < 300; ++i) queue.insert(i);
    const auto turn = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            queue.erase(queue.begin());
            queue.insert(i);
        }
        return AllocatedBytes();
    };
    const std::int64_t before = turn(300, 10000);
    EXPECT_LT(turn(10000, 100000) - before, 100000);
    EXPECT_EQ(order.back(), 100000 - 300);
    EXPECT_TRUE(std::ranges::is_sorted(order, std::greater<>()));
}

// Catches a handle that looks into what has gone, and one that stays behind when a table moves.
TEST(Table_Order, AHandleOutlivesItsOrderEmptyAndFollowsItsTable) {
    Order order;
    EXPECT_TRUE(order.empty());
    {
        Cities cities = {{"b", 2}, {"a", 1}};
        order = cities.order(&City::Code);
        Cities moved(std::move(cities));
        moved.insert({"c", 0});
        EXPECT_EQ(order[0].Name, "c");
        EXPECT_EQ(order.rank_of("b"), 2u);
        EXPECT_EQ(moved.order(&City::Code).begin(), order.begin());
    }
    EXPECT_FALSE(order);
    EXPECT_EQ(order.begin(), order.end());
    EXPECT_FALSE(order.rank_of("b"));
    EXPECT_TRUE(order.equal_range(std::int16_t{1}).empty());
    EXPECT_THROW(static_cast<void>(order[0]), std::out_of_range);
}

// Catches a handle of an order that could not follow a change, and is asked all the same.
TEST(Table_Update, AnOrderThatFindsNoMemoryToFollowIsDropped) {
    struct Owner {
        int Id;
        std::unique_ptr<std::string> Owned;
    };
    Table<Owner, &Owner::Id> owners;
    for (const int id : {1, 2}) owners.insert({id, std::make_unique<std::string>(99, 'x')});
    const auto order = owners.order([](const Owner& one) { return std::string(*one.Owned); });
    FailAllocation(1);
    EXPECT_TRUE(owners.update(1, &Owner::Owned, [](auto& owned) { owned->front() = 'y'; }));
    FailAllocation(0);
    EXPECT_TRUE(!order && order.empty());
    EXPECT_EQ(owners.at(1).Owned->front(), 'y');
}

// Catches a merge that leaves a record in neither table or in both, and an addition that has found
// room for a full block of an order and loses it again.
TEST(Table_Merge, ARecordThatFindsNoMemoryStaysWhereItWas) {
    for (const int held : {0, 63, 256}) {
        bool failed = true;
        for (std::int64_t failing = 1; failed; ++failing) {
            Cities here, there = {{"a city", 1}, {"b", 2}, {"c", 3}};
            const auto byCode = here.order(&City::Code);
            const auto byName = here.order(&City::Name);
            for (int i = 0; i < held; ++i)
                here.insert({"a city by the number " + std::to_string(i)});
            FailAllocation(failing);
            try {
                here.merge(there);
            } catch (const std::bad_alloc&) {
            }
            failed = AllocationHasFailed();
            FailAllocation(0);
            EXPECT_EQ(here.size() + there.size(), static_cast<std::size_t>(held) + 3);
            EXPECT_EQ(byCode.size(), here.size());
            EXPECT_TRUE(std::ranges::is_sorted(byName, {}, &City::Name));
        }
    }
}

}  // namespace
}  // namespace zorvane
