#include "collection/ZVCollectionEx.h"
#include "tests/models/KeyedRun.h"
#include "tests/models/ZVCollectionModel.h"

namespace zorvane {
namespace {

class Run : public KeyedRun<ZVCollectionEx, CollectionModel> {
  public:
    using KeyedRun::KeyedRun;

  private:
    void OperateSpecially(const Variant& v, const Text& key) override {
        DoChosen(Below(2),
                 {Both(1, "Exists",
                       [&](auto& c) {
                           return FoundAt([&](std::int32_t& at) { return c.Exists(v, at); });
                       }),
                  Both(2, "BinaryExists", [&](auto& c) {
                      return FoundAt([&](std::int32_t& at) { return c.BinaryExists(key, at); });
                  })});
    }
    std::vector<Variant> ModelCells(std::int32_t position) override {
        const auto& row = model_.at(position);
        return {row.hashCode, row.hashIndex, row.item, row.itemLong, row.itemString, row.key};
    }
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

std::unique_ptr<StepRun> StartZVCollection(std::uint32_t kind) {
    return std::make_unique<Run>(kind);
}

}  // namespace zorvane
