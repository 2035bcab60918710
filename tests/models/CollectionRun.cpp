#include "tests/models/ListRun.h"
#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Collection.h"

namespace zorvane {
namespace {

class Run : public ListRun<Collection> {
    void Operate() override {
        const Variant v = AnyIndex();
        const Variant key = Below(4) != 0 ? Variant(AnyKey()) : Variant();
        const Variant before = Perhaps(), after = Perhaps();
        const auto passRemoving = [&] {
            std::int32_t seen = 0;
            for (auto at = collection_.begin(); at != collection_.end(); ++at, ++seen) {
                collection_.Remove(1);
            }
            return seen;
        };
        const auto halfGoes = [&] {
            const std::int32_t seen = (Count() + 1) / 2;
            rows_.erase(rows_.begin(), rows_.begin() + seen);
            return seen;
        };
        if (Below(200) == 0) return DoAtOnce("a pass that removes", passRemoving, halfGoes);
        DoChosen(static_cast<unsigned>(Below(8)),
                 {{4, "Add", {Number(), key, before, after}, [&] { Add(key, before, after); }},
                  {6, "Remove", {v}, [&] { rows_.erase(At(v)); }},
                  {8, "Item", {v}, [&] { return At(v)->item; }}});
    }
    Text AnyKey() override {
        if (Below(30) == 0) return {};
        if (Below(3) == 0) return CrowdedKey(static_cast<unsigned>(Below(40)));
        const auto letter = static_cast<char16_t>((Below(2) != 0 ? u'A' : u'a') + Below(20));
        return std::u16string(static_cast<std::size_t>(1 + Below(2)), letter);
    }
    bool IsKey(const Text& own, const Text& key) const override {
        return EqualTexts(own, key, CompareMode::Text);
    }
    void Add(const Variant& key, const Variant& before, const Variant& after) {
        if (!before.IsEmpty() && !after.IsEmpty()) throw Error(5);
        if (key.IsText() && Find(key.AsText()) != rows_.end()) throw Error(457);
        rows_.insert(PlaceFor(before, after), {Number(), key});
    }
    bool StateIsOther() override {
        return collection_.Get(u"COUNT") != Variant(Count()) ||
               !std::equal(collection_.begin(), collection_.end(), rows_.begin(), rows_.end(),
                           [](const Variant& item, const Row& row) { return item == row.item; }) ||
               !std::ranges::all_of(rows_, [&](const Row& row) {
                   return row.key.IsEmpty() || collection_.Item(row.key) == row.item;
               });
    }
};

}  // namespace

std::unique_ptr<StepRun> StartCollection(std::uint32_t) {
    return std::make_unique<Run>();
}

}  // namespace zorvane
