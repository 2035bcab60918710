#include "tests/unit/collection/CollectionModelRun.h"

#include "collection/ZVCollectionEx.h"
#include "tests/support/ModelRun.h"
#include "tests/unit/collection/CollectionModel.h"

namespace zorvane {
namespace {

class Run : public ModelRun<ZVCollectionEx, CollectionModel> {
  public:
    using ModelRun::ModelRun;

  private:
    void OperateSpecially(const Variant& v, const Text& key) override {
        std::int32_t at = 77;
        std::int32_t modelAt = 77;
        if (Chance(60)) {
            return Do(
                "Exists",
                [&] {
                    const bool found = container_.Exists(v, at);
                    return FoundAt(found, at);
                },
                [&] {
                    const bool found =
                        v.IsText() ? model_.exists(v.AsText(), modelAt) : model_.resolve(v) != 0;
                    return FoundAt(found, modelAt);
                });
        }
        return Do(
            "BinaryExists",
            [&] {
                const bool found = container_.BinaryExists(key, at);
                return FoundAt(found, at);
            },
            [&] {
                const bool found = model_.binaryExists(key, modelAt);
                return FoundAt(found, modelAt);
            });
    }
    std::vector<Variant> ModelCells(std::int32_t position) override {
        const auto& row = model_.at(position);
        return {row.hashCode, row.hashIndex, row.item, row.itemLong, row.itemString, row.key};
    }
    std::int32_t ModelCapacity() override { return model_.capacity; }
    std::vector<Variant> SourceRecord() override {
        // Keys that no other record of the source has: what a repeated one leads to is our own
        // choice.
        const Text key = Text("copied ") + Text(std::to_string(++copied_)) + SomeKey();
        return {Chance(80) ? Variant(std::int32_t{0}) : Variant(CollectionModel::hashOf(key)),
                std::int32_t{0},
                SomeItem(),
                static_cast<std::int32_t>(Below(9)),
                SomeKey(),
                key};
    }
    int copied_ = 0;
};

}  // namespace

std::optional<std::string> RunCollectionModel(std::uint32_t seed, int operations) {
    return Run(seed).Go(operations);
}

}  // namespace zorvane
