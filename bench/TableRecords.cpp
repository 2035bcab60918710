// The typed table and what one would pick instead, with records of 24 and of 200 bytes under whole
// numbers. "bare vector" has no keys: it says what positions and visits cost at the least. With
// std::string keys the table stands beside the containers of the domain as well.

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <unordered_map>

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>
#ifdef PEER_TSL
#include <tsl/ordered_map.h>
#endif

#include "bench/Contender.h"
#include "zorvane/table/Table.h"

namespace {

using namespace bench;

using Key = std::uint64_t;

template <size_t kBytes>
struct Record {
    Key key;
    int32_t value;
    char rest[kBytes - sizeof(Key) - sizeof(int32_t)];
};

// A pass over records, or over pairs of key and record.
template <class C>
int64_t sumOf(const C& c) {
    int64_t s = 0;
    for (const auto& one : c) {
        if constexpr (requires { one.second; }) {
            s += one.second.value;
        } else {
            s += one.value;
        }
    }
    return s;
}

// What all have in common. Keys are drawn: the hashes of std and Boost are the number itself, and
// numbers in a row, or any one number apart, would fall into slots of their own by luck.
template <class R>
struct Records {
    static constexpr bool positional = true, sorted = false;
    using Text = std::u16string;
    const Data& d;
    std::vector<Key> keys;
    explicit Records(const Data& data) : d(data), keys(data.values.size()) {
        std::ranges::generate(keys, std::mt19937_64(data.values.size()));
    }
    BENCH_INLINE Key keyOf(size_t i) const { return keys[i]; }
    R make(size_t i) const { return {keyOf(i), d.values[i], {}}; }
};

template <class R>
struct OurTable : Records<R> {
    using Records<R>::Records;
    zorvane::Table<R, &R::key> c;
    void add(size_t i) { c.insert(this->make(i)); }
    BENCH_INLINE int32_t byKey(size_t i) { return c.find(this->keyOf(i))->value; }
    BENCH_INLINE int32_t byPos(size_t p) { return c.nth(p).value; }
    BENCH_INLINE bool absent() { return c.contains(Key{1}); }
    int64_t sum() { return sumOf(c); }
    void removeKey(size_t i) { c.erase(this->keyOf(i)); }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};

template <class R>
struct BareVector : Records<R> {
    static constexpr bool keyless = true;
    using Records<R>::Records;
    std::vector<R> c;
    void add(size_t i) { c.push_back(this->make(i)); }
    BENCH_INLINE int32_t byPos(size_t p) { return c[p].value; }
    int64_t sum() { return sumOf(c); }
    size_t size() const { return c.size(); }
};

// Records in a vector, and where each stands: whoever is removed, all behind are renumbered.
template <class R>
struct MapAndVector : Records<R> {
    using Records<R>::Records;
    std::vector<R> c;
    std::unordered_map<Key, size_t> places;
    void add(size_t i) {
        if (places.emplace(this->keyOf(i), c.size()).second) c.push_back(this->make(i));
    }
    BENCH_INLINE int32_t byKey(size_t i) { return c[places.find(this->keyOf(i))->second].value; }
    BENCH_INLINE int32_t byPos(size_t p) { return c[p].value; }
    BENCH_INLINE bool absent() { return places.contains(1); }
    int64_t sum() { return sumOf(c); }
    void removeAt(size_t place) {
        places.erase(c[place].key);
        c.erase(c.begin() + long(place));
        for (size_t i = place; i < c.size(); ++i) places[c[i].key] = i;
    }
    void removeKey(size_t i) { removeAt(places.find(this->keyOf(i))->second); }
    void removeFirst() { removeAt(0); }
    size_t size() const { return c.size(); }
};

template <class R>
struct BoostMulti : Records<R> {
    using Records<R>::Records;
    boost::multi_index_container<
        R, boost::multi_index::indexed_by<
               boost::multi_index::random_access<>,
               boost::multi_index::hashed_unique<boost::multi_index::member<R, Key, &R::key>>>>
        c;
    void add(size_t i) { c.push_back(this->make(i)); }
    BENCH_INLINE int32_t byKey(size_t i) { return c.template get<1>().find(this->keyOf(i))->value; }
    BENCH_INLINE int32_t byPos(size_t p) { return c[p].value; }
    BENCH_INLINE bool absent() { return c.template get<1>().count(1) != 0; }
    int64_t sum() { return sumOf(c); }
    void removeKey(size_t i) { c.template get<1>().erase(this->keyOf(i)); }
    void removeFirst() { c.pop_front(); }
    size_t size() const { return c.size(); }
};

template <class R>
struct StdMap : Records<R> {
    static constexpr bool positional = false, sorted = true;
    using Records<R>::Records;
    std::map<Key, R> c;
    void add(size_t i) { c.emplace(this->keyOf(i), this->make(i)); }
    BENCH_INLINE int32_t byKey(size_t i) { return c.find(this->keyOf(i))->second.value; }
    BENCH_INLINE bool absent() { return c.contains(1); }
    int64_t sum() { return sumOf(c); }
    void removeKey(size_t i) { c.erase(this->keyOf(i)); }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};

#ifdef PEER_TSL
template <class R>
struct TslOrdered : Records<R> {
    using Records<R>::Records;
    tsl::ordered_map<Key, R, std::hash<Key>, std::equal_to<Key>, std::allocator<std::pair<Key, R>>,
                     std::vector<std::pair<Key, R>>>
        c;
    void add(size_t i) { c.emplace(this->keyOf(i), this->make(i)); }
    BENCH_INLINE int32_t byKey(size_t i) { return c.find(this->keyOf(i)).value().value; }
    BENCH_INLINE int32_t byPos(size_t p) { return c.nth(p).value().value; }
    BENCH_INLINE bool absent() { return c.contains(1); }
    int64_t sum() { return sumOf(c); }
    void removeKey(size_t i) { c.erase(this->keyOf(i)); }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};
#endif

// The table beside the peers that keep insertion order.
struct Named {
    std::string key;
    Value value;
};
struct TableByName {
    static constexpr bool positional = true, sorted = false;
    using Text = std::string;
    const Data& d;
    const std::string absentKey = absentOf<std::string>(d);
    zorvane::Table<Named, &Named::key> c;
    explicit TableByName(const Data& data) : d(data) {}
    void add(size_t i) { c.try_emplace(d.bytes[i], d.values[i]); }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(c.find(d.bytes[i])->value); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(c.nth(p).value); }
    BENCH_INLINE bool absent() { return c.contains(absentKey); }
    int64_t sum() {
        int64_t s = 0;
        for (const Named& one : c) s += toInt(one.value);
        return s;
    }
    void removeKey(size_t i) { c.erase(d.bytes[i]); }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};

template <size_t kBytes>
void enrollRecords() {
    using R = Record<kBytes>;
    static_assert(sizeof(R) == kBytes);
    const std::string group = "records of " + std::to_string(kBytes) + " bytes";
    enroll<OurTable<R>>(group, "Table");
    enroll<BareVector<R>>(group, "bare vector");
    enroll<MapAndVector<R>>(group, "std::unordered_map and vector");
    enroll<BoostMulti<R>>(group, "Boost.MultiIndex");
    enroll<StdMap<R>>(group, "std::map");
#ifdef PEER_TSL
    enroll<TslOrdered<R>>(group, "tsl::ordered_map");
#endif
}

const bool enrolled = [] {
    enrollRecords<24>();
    enrollRecords<200>();
    enroll<TableByName>("insertion, std::string", "Table");
    return true;
}();

}  // namespace
