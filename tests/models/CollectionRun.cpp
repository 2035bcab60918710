#include "platform/CaseMapping.h"
#include "platform/Collection.h"
#include "tests/models/ListRun.h"

namespace zorvane {
namespace {

class Run : public ListRun<Collection> {
    void Operate() override {
        const Variant v = Drawn(AnyIndex());
        const std::int32_t kind = Below(8);
        if (kind < 4) {
            CollectionAdd options{{}, Perhaps(), Perhaps()};
            if (Below(4) != 0) options.Key = Drawn(AnyKey());
            Do(
                "Add", [&] { collection_.Add(Number(), options); }, [&] { Add(options); });
        } else if (kind < 6) {
            Do(
                "Remove", [&] { collection_.Remove(v); }, [&] { rows_.erase(At(v)); });
        } else {
            Do(
                "Item", [&] { return collection_.Item(v); }, [&] { return At(v)->item; });
        }
    }
    Text AnyKey() override {
        if (Below(30) == 0) return {};
        const auto letter = static_cast<char16_t>((Below(2) != 0 ? u'A' : u'a') + Below(20));
        return std::u16string(static_cast<std::size_t>(1 + Below(2)), letter);
    }
    bool IsKey(const Row& row, const Text& key) const override {
        return row.key && EqualTexts(*row.key, key, CompareMode::Text);
    }
    void Add(const CollectionAdd& options) {
        if (options.Before && options.After) throw Error(5);
        if (options.Key && Find(*options.Key) != rows_.end()) throw Error(457);
        rows_.insert(PlaceFor(options), {Number(), options.Key});
    }
    bool StateIsOther() override {
        return collection_.Count() != Count() ||
               !std::equal(collection_.begin(), collection_.end(), rows_.begin(), rows_.end(),
                           [](const Variant& item, const Row& row) { return item == row.item; }) ||
               !std::ranges::all_of(rows_, [&](const Row& row) {
                   return !row.key || collection_.Item(*row.key) == row.item;
               });
    }
};

}  // namespace

std::unique_ptr<StepRun> StartCollection(std::uint32_t) {
    return std::make_unique<Run>();
}

}  // namespace zorvane
