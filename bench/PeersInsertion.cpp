// Peers that keep insertion order: a hash for the keys beside a sequence for the positions.
#include "bench/Contender.h"

#include <deque>
#include <memory>
#include <unordered_map>

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index/ranked_index.hpp>
#include <boost/multi_index_container.hpp>
#include <ext/pb_ds/assoc_container.hpp>
#include <ext/pb_ds/tree_policy.hpp>
#if __has_include(<boost/unordered/unordered_flat_map.hpp>)
#include <boost/unordered/unordered_flat_map.hpp>
#define PEER_BOOST_FLAT 1
#endif
#ifdef PEER_ABSL
#include <absl/container/flat_hash_map.h>
#endif
#ifdef PEER_TSL
#include <tsl/ordered_map.h>
#include <tsl/robin_map.h>
#endif
#ifdef PEER_QT
#include <QHash>
#include <QList>
#include <QString>
#endif

namespace {
using namespace bench;

template <class K>
using View = std::basic_string_view<typename K::value_type>;

template <class K>
struct Entry {
    using Text = K;
    K key;
    Value value;
    int64_t pos;
};

// Positions in a vector: every later entry is renumbered by hand.
template <class Entry>
struct VectorSeq {
    using Item = Entry;
    std::vector<Entry*> v;
    void push(Entry* e) {
        e->pos = int64_t(v.size());
        v.push_back(e);
    }
    void insert(size_t p, Entry* e) {
        e->pos = int64_t(p);
        v.insert(v.begin() + long(p), e);
        for (size_t i = p + 1; i < v.size(); ++i) ++v[i]->pos;
    }
    void erase(Entry* e) {
        size_t p = size_t(e->pos);
        v.erase(v.begin() + long(p));
        for (size_t i = p; i < v.size(); ++i) --v[i]->pos;
    }
};

// Positions in a deque with a moving base: the shorter side is renumbered.
template <class Entry>
struct DequeSeq {
    using Item = Entry;
    std::deque<Entry*> v;
    int64_t base = 0;
    void push(Entry* e) {
        e->pos = base + int64_t(v.size());
        v.push_back(e);
    }
    void insert(size_t p, Entry* e) {
        v.insert(v.begin() + long(p), e);
        if (p < v.size() / 2) {
            --base;
            for (size_t i = 0; i < p; ++i) --v[i]->pos;
        } else
            for (size_t i = p + 1; i < v.size(); ++i) ++v[i]->pos;
        e->pos = base + int64_t(p);
    }
    void erase(Entry* e) {
        size_t p = size_t(e->pos - base);
        v.erase(v.begin() + long(p));
        if (p < v.size() / 2) {
            ++base;
            for (size_t i = 0; i < p; ++i) ++v[i]->pos;
        } else
            for (size_t i = p; i < v.size(); ++i) --v[i]->pos;
    }
};

template <class Map, class Seq>
struct HashAndSeq {
    static constexpr bool positional = true, sorted = false;
    using Entry = typename Seq::Item;
    using Text = typename Entry::Text;
    const Data& d;
    const std::vector<Text>& keys = keysOf<Text>(d);
    const Text absentKey = absentOf<Text>(d);
    Map map;
    Seq seq;
    explicit HashAndSeq(const Data& data) : d(data) {}
    ~HashAndSeq() {
        for (Entry* e : seq.v) delete e;
    }
    Entry* make(size_t i) {
        auto* e = new Entry{keys[i], d.values[i], 0};
        if (!map.emplace(View<Text>(e->key), e).second) {
            delete e;
            return nullptr;
        }
        return e;
    }
    void add(size_t i) {
        if (Entry* e = make(i)) seq.push(e);
    }
    void insertMid(size_t i) {
        if (Entry* e = make(i)) seq.insert(seq.v.size() / 2, e);
    }
    BENCH_INLINE int32_t byKey(size_t i) {
        return toInt(map.find(View<Text>(keys[i]))->second->value);
    }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(seq.v[p]->value); }
    BENCH_INLINE bool absent() { return map.find(View<Text>(absentKey)) != map.end(); }
    int64_t sum() {
        int64_t s = 0;
        for (Entry* e : seq.v) s += toInt(e->value);
        return s;
    }
    void removeIt(typename Map::iterator it) {
        Entry* e = it->second;
        map.erase(it);
        seq.erase(e);
        delete e;
    }
    void removeKey(size_t i) { removeIt(map.find(View<Text>(keys[i]))); }
    void removeFirst() { removeIt(map.find(View<Text>(seq.v.front()->key))); }
    size_t size() const { return seq.v.size(); }
};

// A hash to a node, the order as a balanced tree over labels: everything is logarithmic.
template <class Map>
struct HashAndTree {
    static constexpr bool positional = true, sorted = false;
    using Text = std::u16string;
    using Entry = ::Entry<Text>;
    using Tree = __gnu_pbds::tree<int64_t, Entry*, std::less<int64_t>, __gnu_pbds::rb_tree_tag,
                                  __gnu_pbds::tree_order_statistics_node_update>;
    const Data& d;
    Map map;
    Tree tree;
    int64_t label = 0;
    explicit HashAndTree(const Data& data) : d(data) {}
    ~HashAndTree() {
        for (auto& [k, e] : tree) delete e;
    }
    void add(size_t i) {
        auto* e = new Entry{d.keys[i], d.values[i], label};
        if (!map.emplace(View<Text>(e->key), e).second) {
            delete e;
            return;
        }
        tree.insert({label++, e});
    }
    BENCH_INLINE int32_t byKey(size_t i) {
        return toInt(map.find(View<Text>(d.keys[i]))->second->value);
    }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(tree.find_by_order(p)->second->value); }
    BENCH_INLINE bool absent() { return map.find(View<Text>(d.absent)) != map.end(); }
    int64_t sum() {
        int64_t s = 0;
        for (auto& [k, e] : tree) s += toInt(e->value);
        return s;
    }
    void removeKey(size_t i) {
        auto it = map.find(View<Text>(d.keys[i]));
        Entry* e = it->second;
        map.erase(it);
        tree.erase(e->pos);
        delete e;
    }
    void removeFirst() {
        Entry* e = tree.begin()->second;
        map.erase(View<Text>(e->key));
        tree.erase(tree.begin());
        delete e;
    }
    size_t size() const { return tree.size(); }
};

template <class K>
struct MultiRecord {
    K key;
    Value value;
};
template <class K>
struct MultiRandomAccess {
    static constexpr bool positional = true, sorted = false;
    using Text = K;
    using Record = MultiRecord<K>;
    using C = boost::multi_index_container<
        Record, boost::multi_index::indexed_by<
                    boost::multi_index::random_access<>,
                    boost::multi_index::hashed_unique<
                        boost::multi_index::member<Record, K, &Record::key>, std::hash<K>>>>;
    const Data& d;
    const std::vector<K>& keys = keysOf<K>(d);
    const K absentKey = absentOf<K>(d);
    C c;
    explicit MultiRandomAccess(const Data& data) : d(data) {}
    void add(size_t i) { c.push_back({keys[i], d.values[i]}); }
    void insertMid(size_t i) { c.insert(c.begin() + long(c.size() / 2), {keys[i], d.values[i]}); }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(c.template get<1>().find(keys[i])->value); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(c[p].value); }
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
    void removeFirst() { c.pop_front(); }
    size_t size() const { return c.size(); }
};

struct MultiRankedSeq {
    static constexpr bool positional = true, sorted = false;
    using Text = std::u16string;
    struct R {
        int64_t label;
        std::u16string key;
        Value value;
    };
    using C = boost::multi_index_container<
        R, boost::multi_index::indexed_by<
               boost::multi_index::ranked_unique<boost::multi_index::member<R, int64_t, &R::label>>,
               boost::multi_index::hashed_unique<
                   boost::multi_index::member<R, std::u16string, &R::key>,
                   std::hash<std::u16string>>>>;
    const Data& d;
    C c;
    int64_t label = 0;
    explicit MultiRankedSeq(const Data& data) : d(data) {}
    void add(size_t i) { c.emplace_hint(c.end(), R{label++, d.keys[i], d.values[i]}); }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(c.get<1>().find(d.keys[i])->value); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(c.nth(p)->value); }
    BENCH_INLINE bool absent() { return c.get<1>().find(d.absent) != c.get<1>().end(); }
    int64_t sum() {
        int64_t s = 0;
        for (auto& r : c) s += toInt(r.value);
        return s;
    }
    void removeKey(size_t i) {
        auto& h = c.get<1>();
        h.erase(h.find(d.keys[i]));
    }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};

#ifdef PEER_TSL
template <class K>
struct TslOrdered {
    static constexpr bool positional = true, sorted = false;
    using Text = K;
    using C =
        tsl::ordered_map<K, Value, std::hash<K>, std::equal_to<K>,
                         std::allocator<std::pair<K, Value>>, std::vector<std::pair<K, Value>>>;
    const Data& d;
    const std::vector<K>& keys = keysOf<K>(d);
    const K absentKey = absentOf<K>(d);
    C c;
    explicit TslOrdered(const Data& data) : d(data) {}
    void add(size_t i) { c.insert({keys[i], d.values[i]}); }
    // No insertMid: insert_at_position of release 1.0.0 loses keys (the check catches it).
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(c.find(keys[i]).value()); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(c.values_container()[p].second); }
    BENCH_INLINE bool absent() { return c.find(absentKey) != c.end(); }
    int64_t sum() {
        int64_t s = 0;
        for (auto& r : c) s += toInt(r.second);
        return s;
    }
    void removeKey(size_t i) { c.erase(keys[i]); }
    void removeFirst() { c.erase(c.begin()); }
    size_t size() const { return c.size(); }
};
#endif

#ifdef PEER_QT
// Shared texts: adding a key copies a reference, not the text. QList has room at its front.
struct QtHashList {
    static constexpr bool positional = true, sorted = false;
    using Text = std::u16string;
    struct E {
        QString key;
        Value value;
        int64_t pos;
    };
    const Data& d;
    std::vector<QString> keys;
    QString absentKey;
    QHash<QString, E*> map;
    QList<E*> list;
    int64_t base = 0;
    explicit QtHashList(const Data& data)
        : d(data),
          absentKey(QString::fromUtf16(data.absent.data(), qsizetype(data.absent.size()))) {
        for (auto& k : d.keys) keys.push_back(QString::fromUtf16(k.data(), qsizetype(k.size())));
    }
    ~QtHashList() {
        for (E* e : list) delete e;
    }
    void add(size_t i) {
        qsizetype before = map.size();
        E*& slot = map[keys[i]];
        if (map.size() == before) return;
        slot = new E{keys[i], d.values[i], base + list.size()};
        list.append(slot);
    }
    void insertMid(size_t i) {
        qsizetype before = map.size();
        E*& slot = map[keys[i]];
        if (map.size() == before) return;
        qsizetype p = list.size() / 2;
        slot = new E{keys[i], d.values[i], base + p};
        for (qsizetype k = p; k < list.size(); ++k) ++list[k]->pos;
        list.insert(p, slot);
    }
    BENCH_INLINE int32_t byKey(size_t i) { return toInt(map.constFind(keys[i]).value()->value); }
    BENCH_INLINE int32_t byPos(size_t p) { return toInt(list.at(qsizetype(p))->value); }
    BENCH_INLINE bool absent() { return map.contains(absentKey); }
    int64_t sum() {
        int64_t s = 0;
        for (const E* e : std::as_const(list)) s += toInt(e->value);
        return s;
    }
    void drop(E* e) {
        qsizetype p = qsizetype(e->pos - base);
        list.removeAt(p);
        if (p < list.size() / 2) {
            ++base;
            for (qsizetype k = 0; k < p; ++k) ++list[k]->pos;
        } else
            for (qsizetype k = p; k < list.size(); ++k) --list[k]->pos;
        delete e;
    }
    void removeKey(size_t i) { drop(map.take(keys[i])); }
    void removeFirst() {
        E* e = list.first();
        map.remove(e->key);
        drop(e);
    }
    size_t size() const { return size_t(list.size()); }
};
#endif

// What stands in the table under both kinds of keys.
template <class K>
void enrollBoth(const std::string& g) {
    using E = Entry<K>;
    using V = View<K>;
    using StdMap = std::unordered_map<V, E*>;
    enroll<HashAndSeq<StdMap, VectorSeq<E>>>(g, "std::unordered_map + vector");
    enroll<HashAndSeq<StdMap, DequeSeq<E>>>(g, "std::unordered_map + deque");
#ifdef PEER_ABSL
    using Absl = absl::flat_hash_map<V, E*>;
    enroll<HashAndSeq<Absl, VectorSeq<E>>>(g, "absl::flat_hash_map + vector");
    enroll<HashAndSeq<Absl, DequeSeq<E>>>(g, "absl::flat_hash_map + deque");
#endif
#ifdef PEER_BOOST_FLAT
    using Flat = boost::unordered_flat_map<V, E*, std::hash<V>>;
    enroll<HashAndSeq<Flat, VectorSeq<E>>>(g, "boost flat_map + vector");
    enroll<HashAndSeq<Flat, DequeSeq<E>>>(g, "boost flat_map + deque");
#endif
#ifdef PEER_TSL
    enroll<HashAndSeq<tsl::robin_map<V, E*>, DequeSeq<E>>>(g, "tsl::robin_map + deque");
    enroll<TslOrdered<K>>(g, "tsl::ordered_map");
#endif
    enroll<MultiRandomAccess<K>>(g, "multi_index random_access+hashed");
}

[[maybe_unused]] const bool enrolled = [] {
    const char* g = "insertion";
    using E = Entry<std::u16string>;
    enrollBoth<std::u16string>(g);
    enrollBoth<std::string>("insertion, std::string");
    enroll<HashAndTree<std::unordered_map<View<std::u16string>, E*>>>(
        g, "std::unordered_map + pb_ds tree");
#ifdef PEER_ABSL
    enroll<HashAndTree<absl::flat_hash_map<View<std::u16string>, E*>>>(
        g, "absl::flat_hash_map + pb_ds tree");
#endif
    enroll<MultiRankedSeq>(g, "multi_index ranked(seq)+hashed");
#ifdef PEER_QT
    enroll<QtHashList>(g, "QHash + QList");
#endif
    return true;
}();
}  // namespace
