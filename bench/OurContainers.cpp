// The containers of this project in the eight tests, and two middle-of-the-container ones.
//
// Each stands here four times: keyed with the very text objects that were added, ("other text")
// with texts of the same units that the container has never met, so that nothing is cached in them,
// ("in place") looking at items where they lie, as peers do, instead of taking a copy that outlives
// them, and the last way with keys that a program has as UTF-8.

#include "bench/Contender.h"
#include "zorvane/collection/CollectionEx.h"
#include "zorvane/collection/ZVCollectionEx.h"
#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Collection.h"

namespace {

using namespace bench;
using zorvane::Text;
using zorvane::Variant;

enum class Asking { SameText, OtherText, InPlace, Bytes };

// Keys as they are added and asked for.
template <class Form>
struct Keys {
    std::vector<Form> added;
    std::vector<Form> asked;
    Form absent;

    template <class K>
    Keys(const std::vector<K>& keys, K missing, Asking asking) : absent(Make(missing)) {
        for (const K& key : keys) added.push_back(Make(key));
        if (asking != Asking::OtherText) {
            asked = added;
        } else {
            for (const K& key : keys) asked.push_back(Make(key));
        }
    }

  private:
    static Form Make(const std::u16string& key) { return Text(key); }
    static Form Make(const std::string& key) { return key; }
};

void Prepare(zorvane::ZVCollectionEx& c) {
    c.SetGranularity(10000);
    c.SetSorted(false);
}
void Prepare(zorvane::KeyListEX& c) {
    c.SetGranularity(2000);
}
void Prepare(zorvane::CollectionEx& c) {
    c.SetMemory(10000, 0, 0);
}
void Prepare(zorvane::Collection&) {}

template <class Container>
void AddTo(Container& c, const Variant& item, const Text& key) {
    c.Add(item, key);
}
void AddTo(zorvane::Collection& c, const Variant& item, const Text& key) {
    c.Add(item, {.Key = key});
}

template <class Container, Asking kAsking>
class Ours {
  public:
    static constexpr bool positional = true;
    static constexpr bool sorted = std::is_same_v<Container, zorvane::KeyListEX>;

    using Text = std::conditional_t<kAsking == Asking::Bytes, std::string, std::u16string>;

    explicit Ours(const Data& data)
        : data_(data), keys_(keysOf<Text>(data), absentOf<Text>(data), kAsking) {
        Prepare(container_);
    }

    void add(std::size_t i) { AddTo(container_, data_.values[i], KeyText(keys_.added[i])); }
    BENCH_INLINE std::int32_t byKey(std::size_t i) {
        if constexpr (kLooks) {
            return container_.FindItem(keys_.asked[i])->ToLong();
        } else {
            return container_.Item(keys_.asked[i]).ToLong();
        }
    }
    BENCH_INLINE std::int32_t byPos(std::size_t p) {
        const auto position = static_cast<std::int32_t>(p) + 1;
        if constexpr (kLooks) {
            return container_.FindItem(position)->ToLong();
        } else {
            return container_.Item(position).ToLong();
        }
    }
    BENCH_INLINE bool absent() { return Has(keys_.absent); }
    std::int64_t sum() {
        std::int64_t total = 0;
        for (const Variant& item : container_) total += item.ToLong();
        return total;
    }
    void removeKey(std::size_t i) { container_.Remove(keys_.asked[i]); }
    void removeFirst() { container_.Remove(std::int32_t{1}); }
    std::size_t size() const { return static_cast<std::size_t>(container_.Count()); }

    void insertMid(std::size_t i) requires(!sorted &&
                                           std::is_same_v<Container, zorvane::ZVCollectionEx>) {
        container_.Add(data_.values[i], KeyText(keys_.added[i]),
                       {.Position = container_.Count() / 2 + 1});
    }

  private:
    static constexpr bool kLooks = kAsking == Asking::InPlace || kAsking == Asking::Bytes;
    using Form = std::conditional_t<kAsking == Asking::Bytes, std::string, Variant>;

    static const zorvane::Text& KeyText(const Variant& key) { return key.TextUnchecked(); }
    static zorvane::Text KeyText(const std::string& key) { return key; }
    bool Has(const Form& key) {
        if constexpr (requires { container_.Contains(key); }) {
            return container_.Contains(key);
        } else if constexpr (requires { container_.Exists(key); }) {
            return container_.Exists(key);
        } else {
            return zorvane::IgnoringErrors([&] { static_cast<void>(container_.Item(key)); });
        }
    }

    const Data& data_;
    Keys<Form> keys_;
    Container container_;
};

template <class Container>
void EnrollOurs(const std::string& group, const std::string& name) {
    enroll<Ours<Container, Asking::SameText>>(group, name);
    enroll<Ours<Container, Asking::OtherText>>(group, name + ", other text");
    enroll<Ours<Container, Asking::InPlace>>(group, name + ", in place");
    enroll<Ours<Container, Asking::Bytes>>(group + ", std::string", name);
}

const bool enrolled = [] {
    EnrollOurs<zorvane::ZVCollectionEx>("insertion", "ZVCollectionEx");
    EnrollOurs<zorvane::CollectionEx>("insertion", "CollectionEx");
    EnrollOurs<zorvane::KeyListEX>("sorted", "KeyListEX");
    return true;
}();

}  // namespace
