#include "keylist/KeyListEX.h"
#include "tests/models/KeyListModel.h"
#include "tests/models/KeyedRun.h"

namespace zorvane {
namespace {

class Run : public KeyedRun<KeyListEX, KeyListModel> {
  public:
    using KeyedRun::KeyedRun;

  private:
    void OperateSpecially(const Variant&, const Text& key) override {
        const std::int32_t position = SomePosition();
        const unsigned chosen = Below(3);
        if (chosen == 2 && model_.count() > 500) return;
        DoChosen(chosen,
                 {Both(1, "Exists",
                       [&](auto& c) {
                           return FoundAt([&](std::int32_t& at) { return c.Exists(key, at); });
                       }),
                  Both(2, "SetKey", [&](auto& c) { c.SetKey(position, key); }),
                  Both(3, "NewEnum", [&](auto& c) { return Joined(c.NewEnum()); })});
    }
    std::vector<Variant> ModelCells(std::int32_t position) override {
        const auto& row = model_.at(position);
        return {row.item, row.itemLong, row.itemString, row.key};
    }
    std::vector<Variant> SourceRecord() override {
        return {SomeItem(), static_cast<std::int32_t>(Below(9)), SomeKey(), SomeKey()};
    }
};

}  // namespace

std::unique_ptr<StepRun> StartKeyList(std::uint32_t kind) {
    return std::make_unique<Run>(kind);
}

}  // namespace zorvane
