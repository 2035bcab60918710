// What keys cost that somebody chose to be costly, counted in the places that look-ups pass.

#include "bench/Floods.h"
#include "tests/unit/zorvane/Containers.h"
#include "zorvane/table/Table.h"

namespace zorvane {
namespace {

// The index of each container is its own; an explicit instantiation may name it all the same.
template <class Container>
struct Of {};
auto IndexOf(Of<Collection>);
auto IndexOf(Of<CollectionEx>);
auto IndexOf(Of<KeyListEX>);
auto IndexOf(Of<ZVCollectionEx>);
template <class Container, auto kMember>
struct Opened {
    friend auto IndexOf(Of<Container>) { return kMember; }
};
template struct Opened<Collection, &Collection::buckets_>;
template struct Opened<CollectionEx, &CollectionEx::index_>;
template struct Opened<KeyListEX, &KeyListEX::index_>;
template struct Opened<ZVCollectionEx, &ZVCollectionEx::index_>;

std::uint64_t PassedIn(const KeyIndex& index) {
    return index.Passed();
}
template <class Buckets>
std::uint64_t PassedIn(const Buckets& buckets) {
    std::uint64_t passed = 0;
    for (const auto* entry : buckets) {
        for (std::uint64_t here = 1; entry; entry = entry->Next) passed += here++;
    }
    return passed;
}

template <class Container>
class Flooded : public testing::Test {};
using Indexed = testing::Types<Collection, CollectionEx, KeyListEX, ZVCollectionEx>;
TYPED_TEST_SUITE(Flooded, Indexed);

// Catches an index whose places keys can be chosen for, and one that loses a key, or finds another
// in its place, when it notices that they were.
TYPED_TEST(Flooded, KeysPassFewPlacesWhoeverChoseThem) {
    constexpr unsigned kCount = 5000;
    constexpr bool folds = kPlain<TypeParam>;
    constexpr bool lowers = std::is_same_v<TypeParam, CollectionEx>;
    for (const Flood& flood : kFloods) {
        if ((folds && !flood.Folded) || (lowers && !flood.Lowered)) continue;
        SCOPED_TRACE(flood.Name);
        TypeParam container;
        const auto key = [&](unsigned number) { return Text(flood.Key(number)); };
        for (unsigned i = 0; i < kCount; ++i) {
            AddTo(container, static_cast<std::int32_t>(i), key(i));
        }
        const auto passesFew = [&] {
            EXPECT_LT(PassedIn(container.*IndexOf(Of<TypeParam>())), 3 * kCount);
        };
        passesFew();
        if constexpr (requires { container.SetKey(1, key(0)); }) {
            container.Clear();
            container.SetSorted(false);
            for (int i = 0; i < int{kCount}; ++i) AddTo(container, i, Text(std::to_string(i)));
            for (unsigned i = 0; i < kCount; ++i) container.SetKey(int(i) + 1, key(i));
            passesFew();
        }
        for (unsigned i = 0; i < kCount; i += 2) container.Remove(key(i));
        for (unsigned i = 0; i < kCount; ++i) {
            Variant found;
            const bool is = IgnoringErrors([&] { found = container.Item(key(i)); });
            ASSERT_EQ(is, i % 2 == 1) << i;
            ASSERT_EQ(found, is ? Variant(static_cast<std::int32_t>(i)) : Variant());
        }
    }
}

struct Named {
    std::u16string Key;
};
struct Numbered {
    std::uint64_t Key;
};
using Names = Table<Named, &Named::Key>;
using Numbers = Table<Numbered, &Numbered::Key>;
auto IndexOf(Of<Names>);
auto IndexOf(Of<Numbers>);
template struct Opened<Names, &Names::index_>;
template struct Opened<Numbers, &Numbers::index_>;

// Catches a table whose keys are hashed without a secret.
TEST(TableHash, CannotBeSolvedForTextsOrNumbers) {
    constexpr unsigned kCount = 5000;
    for (const Flood& flood : kFloods) {
        Names names;
        for (unsigned i = 0; i < kCount; ++i) names.insert({flood.Key(i)});
        EXPECT_LT(PassedIn(names.*IndexOf(Of<Names>())), 3 * kCount) << flood.Name;
    }
    Numbers numbers;
    for (unsigned i = 0; i < kCount; ++i) numbers.insert({SolvedNumber(i)});
    EXPECT_LT(PassedIn(numbers.*IndexOf(Of<Numbers>())), 3 * kCount);
}

// Catches a count of slots that wraps, so that what is added is lost.
TEST(KeyIndex_Reserve, RefusesMoreThanItCanHold) {
    KeyIndex index;
    EXPECT_THROW(index.Reserve(KeyIndex::kMost + 1), std::length_error);
    EXPECT_THROW(index.Reserve(UINT32_MAX), std::length_error);
}

}  // namespace
}  // namespace zorvane
