// Peers that keep their items in key order.
#include "bench/Contender.h"

#include <map>
#include <memory>

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/ranked_index.hpp>
#include <boost/multi_index_container.hpp>
#include <ext/pb_ds/assoc_container.hpp>
#include <ext/pb_ds/tree_policy.hpp>
#ifdef PEER_ABSL
#include <absl/container/btree_map.h>
#include <absl/container/flat_hash_map.h>
#endif

namespace {
using namespace bench;

// Ordered maps without positions: no test by index.
template <class Map>
struct Ordered {
    static constexpr bool positional = false, sorted = true;
    using Text = typename Map::key_type;
    const Data& d;
    const std::vector<Text>& keys = keysOf<Text>(d);
    const Text absentKey = absentOf<Text>(d);
    Map map;
    explicit Ordered(const Data& data) : d(data) {}
    void add(size_t i) { map.emplace(keys[i], d.values[i]); }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(map.find(keys[i])->second); }
    BENCH_INLINE bool absent() { return map.find(absentKey) != map.end(); }
    int64_t sum() {
        int64_t s = 0;
        for (auto& [k, v] : map) s += toInt(v);
        return s;
    }
    void removeKey(size_t i) { map.erase(map.find(keys[i])); }
    void removeFirst() { map.erase(map.begin()); }
    size_t size() const { return map.size(); }
};

struct OrderStatistics {
    static constexpr bool positional = true, sorted = true;
    using Text = std::u16string;
    using Tree =
        __gnu_pbds::tree<std::u16string, Value, std::less<std::u16string>, __gnu_pbds::rb_tree_tag,
                         __gnu_pbds::tree_order_statistics_node_update>;
    const Data& d;
    Tree t;
    explicit OrderStatistics(const Data& data) : d(data) {}
    void add(size_t i) { t.insert({d.keys[i], d.values[i]}); }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(t.find(d.keys[i])->second); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(t.find_by_order(p)->second); }
    BENCH_INLINE bool absent() { return t.find(d.absent) != t.end(); }
    int64_t sum() {
        int64_t s = 0;
        for (auto& [k, v] : t) s += toInt(v);
        return s;
    }
    void removeKey(size_t i) { t.erase(t.find(d.keys[i])); }
    void removeFirst() { t.erase(t.begin()); }
    size_t size() const { return t.size(); }
};

template <class K>
struct Record {
    K key;
    Value value;
};
using Rec = Record<std::u16string>;

// A vector kept sorted, the records in it or behind pointers.
template <bool Pointers>
struct SortedVector {
    static constexpr bool positional = true, sorted = true;
    using Text = std::u16string;
    using Item = std::conditional_t<Pointers, std::unique_ptr<Rec>, Rec>;
    const Data& d;
    std::vector<Item> v;
    explicit SortedVector(const Data& data) : d(data) {}
    static const Rec& at(const Item& i) {
        if constexpr (Pointers)
            return *i;
        else
            return i;
    }
    auto lower(const std::u16string& k) {
        return std::lower_bound(v.begin(), v.end(), k, [](const Item& a, const std::u16string& b) {
            return at(a).key < b;
        });
    }
    void add(size_t i) {
        auto it = lower(d.keys[i]);
        if (it != v.end() && at(*it).key == d.keys[i]) return;
        if constexpr (Pointers)
            v.insert(it, std::make_unique<Rec>(Rec{d.keys[i], d.values[i]}));
        else
            v.insert(it, Rec{d.keys[i], d.values[i]});
    }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(at(*lower(d.keys[i])).value); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(at(v[p]).value); }
    BENCH_INLINE bool absent() {
        auto it = lower(d.absent);
        return it != v.end() && at(*it).key == d.absent;
    }
    int64_t sum() {
        int64_t s = 0;
        for (auto& i : v) s += toInt(at(i).value);
        return s;
    }
    void removeKey(size_t i) { v.erase(lower(d.keys[i])); }
    void removeFirst() { v.erase(v.begin()); }
    size_t size() const { return v.size(); }
};

struct Ranked {
    static constexpr bool positional = true, sorted = true;
    using Text = std::u16string;
    using C = boost::multi_index_container<
        Rec, boost::multi_index::indexed_by<boost::multi_index::ranked_unique<
                 boost::multi_index::member<Rec, std::u16string, &Rec::key>>>>;
    const Data& d;
    C c;
    explicit Ranked(const Data& data) : d(data) {}
    void add(size_t i) { c.insert({d.keys[i], d.values[i]}); }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(c.find(d.keys[i])->value); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(c.nth(p)->value); }
    BENCH_INLINE bool absent() { return c.find(d.absent) != c.end(); }
    int64_t sum() {
        int64_t s = 0;
        for (auto& r : c) s += toInt(r.value);
        return s;
    }
    void removeKey(size_t i) { c.erase(c.find(d.keys[i])); }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};

template <class K>
struct RankedHashed {
    static constexpr bool positional = true, sorted = true;
    using Text = K;
    using Rec = Record<K>;
    using Key = boost::multi_index::member<Rec, K, &Rec::key>;
    using C = boost::multi_index_container<
        Rec, boost::multi_index::indexed_by<boost::multi_index::ranked_unique<Key>,
                                            boost::multi_index::hashed_unique<Key, std::hash<K>>>>;
    const Data& d;
    const std::vector<K>& keys = keysOf<K>(d);
    const K absentKey = absentOf<K>(d);
    C c;
    explicit RankedHashed(const Data& data) : d(data) {}
    void add(size_t i) { c.insert({keys[i], d.values[i]}); }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(c.template get<1>().find(keys[i])->value); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(c.nth(p)->value); }
    BENCH_INLINE bool absent() {
        return c.template get<1>().find(absentKey) != c.template get<1>().end();
    }
    int64_t sum() {
        int64_t s = 0;
        for (auto& r : c) s += toInt(r.value);
        return s;
    }
    void removeKey(size_t i) {
        auto& h = c.template get<1>();
        h.erase(h.find(keys[i]));
    }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};

#ifdef PEER_ABSL
// Key order in a vector of pointers, exact finds through a hash.
struct HashedSortedVector {
    static constexpr bool positional = true, sorted = true;
    using Text = std::u16string;
    const Data& d;
    absl::flat_hash_map<std::u16string_view, Rec*> map;
    std::vector<Rec*> v;
    explicit HashedSortedVector(const Data& data) : d(data) {}
    ~HashedSortedVector() {
        for (Rec* r : v) delete r;
    }
    auto lower(const std::u16string& k) {
        return std::lower_bound(v.begin(), v.end(), k,
                                [](const Rec* a, const std::u16string& b) { return a->key < b; });
    }
    void add(size_t i) {
        auto* r = new Rec{d.keys[i], d.values[i]};
        if (!map.emplace(r->key, r).second) {
            delete r;
            return;
        }
        v.insert(lower(r->key), r);
    }
    BENCH_INLINE int32_t byKey(size_t i) {
        return toInt(map.find(std::u16string_view(d.keys[i]))->second->value);
    }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(v[p]->value); }
    BENCH_INLINE bool absent() { return map.find(std::u16string_view(d.absent)) != map.end(); }
    int64_t sum() {
        int64_t s = 0;
        for (Rec* r : v) s += toInt(r->value);
        return s;
    }
    void removeKey(size_t i) {
        auto it = map.find(std::u16string_view(d.keys[i]));
        Rec* r = it->second;
        map.erase(it);
        v.erase(lower(r->key));
        delete r;
    }
    void removeFirst() {
        Rec* r = v.front();
        map.erase(r->key);
        v.erase(v.begin());
        delete r;
    }
    size_t size() const { return v.size(); }
};
#endif

// What stands in the table under both kinds of keys.
template <class K>
void enrollBoth(const std::string& g) {
    enroll<Ordered<std::map<K, Value>>>(g, "std::map");
    enroll<RankedHashed<K>>(g, "multi_index ranked+hashed");
#ifdef PEER_ABSL
    enroll<Ordered<absl::btree_map<K, Value>>>(g, "absl::btree_map");
#endif
}

[[maybe_unused]] const bool enrolled = [] {
    const char* g = "sorted";
    enrollBoth<std::u16string>(g);
    enrollBoth<std::string>("sorted, std::string");
    enroll<SortedVector<false>>(g, "sorted vector of records");
    enroll<SortedVector<true>>(g, "sorted vector of pointers");
    enroll<OrderStatistics>(g, "pb_ds order statistics tree");
    enroll<Ranked>(g, "multi_index ranked");
#ifdef PEER_ABSL
    enroll<HashedSortedVector>(g, "absl::flat_hash_map + sorted vector");
#endif
    return true;
}();
}  // namespace
