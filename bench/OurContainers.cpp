// The containers of this project in the eight tests, and two middle-of-the-container ones.
//
// Each stands here three times: keyed with the very text objects that were added, ("other text")
// with texts of the same units that the container has never met, so that nothing is cached in them,
// and ("in place") looking at items where they lie, as peers do, instead of taking a copy that
// outlives them.

#include "bench/Contender.h"
#include "zorvane/collection/CollectionEx.h"
#include "zorvane/collection/ZVCollectionEx.h"
#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Collection.h"

namespace {

using namespace bench;
using zorvane::Text;
using zorvane::Variant;

enum class Asking { SameText, OtherText, InPlace };

struct Keys {
    std::vector<Variant> added;
    std::vector<Variant> asked;
    Variant absent;

    Keys(const Data& data, Asking asking) : absent(Text(data.absent)) {
        for (const auto& key : data.keys) added.emplace_back(Text(key));
        if (asking != Asking::OtherText) {
            asked = added;
        } else {
            for (const auto& key : data.keys) asked.emplace_back(Text(key));
        }
    }
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

    explicit Ours(const Data& data) : data_(data), keys_(data, kAsking) { Prepare(container_); }

    void add(std::size_t i) { AddTo(container_, data_.values[i], keys_.added[i].TextUnchecked()); }
    BENCH_INLINE std::int32_t byKey(std::size_t i) {
        if constexpr (kAsking == Asking::InPlace) {
            return container_.FindItem(keys_.asked[i])->ToLong();
        } else {
            return container_.Item(keys_.asked[i]).ToLong();
        }
    }
    BENCH_INLINE std::int32_t byPos(std::size_t p) {
        const auto position = static_cast<std::int32_t>(p) + 1;
        if constexpr (kAsking == Asking::InPlace) {
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
        container_.Add(data_.values[i], keys_.added[i].TextUnchecked(),
                       {.Position = container_.Count() / 2 + 1});
    }

  private:
    bool Has(const Variant& key) {
        if constexpr (requires { container_.Contains(key); }) {
            return container_.Contains(key);
        } else if constexpr (requires { container_.Exists(key); }) {
            return container_.Exists(key);
        } else {
            return zorvane::IgnoringErrors([&] { static_cast<void>(container_.Item(key)); });
        }
    }

    const Data& data_;
    Keys keys_;
    Container container_;
};

template <class Container>
void EnrollOurs(const std::string& group, const std::string& name) {
    enroll<Ours<Container, Asking::SameText>>(group, name);
    enroll<Ours<Container, Asking::OtherText>>(group, name + ", other text");
    enroll<Ours<Container, Asking::InPlace>>(group, name + ", in place");
}

const bool enrolled = [] {
    EnrollOurs<zorvane::ZVCollectionEx>("insertion", "ZVCollectionEx");
    EnrollOurs<zorvane::CollectionEx>("insertion", "CollectionEx");
    EnrollOurs<zorvane::KeyListEX>("sorted", "KeyListEX");
    return true;
}();

}  // namespace
