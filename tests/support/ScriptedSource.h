#pragma once
// A source for CopyFrom that is no container: it answers CopyItemValue and Count from a table.

#include <string_view>
#include <vector>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

class ScriptedSource : public Object {
  public:
    std::vector<std::vector<Variant>> Cells;  // row 0: the settings; then the records
    Variant CountAnswer;                      // Empty: as many as there are

    [[nodiscard]] Text TypeName() const override { return u"ScriptedSource"; }
    Variant Call(std::u16string_view member, Arguments arguments = {}) override {
        if (!EqualTexts(member, u"CopyItemValue", CompareMode::Text) || arguments.size() != 2) {
            return Object::Call(member, arguments);
        }
        const auto row = static_cast<std::size_t>(arguments[0].ToLong());
        const auto column = static_cast<std::size_t>(arguments[1].ToLong() - 1);
        return row < Cells.size() && column < Cells[row].size() ? Cells[row][column] : Variant();
    }
    Variant Get(std::u16string_view member, Arguments arguments = {}) override {
        if (!EqualTexts(member, u"Count", CompareMode::Text)) return Object::Get(member, arguments);
        if (!CountAnswer.IsEmpty()) return CountAnswer;
        return static_cast<std::int32_t>(Cells.size()) - 1;
    }
};

}  // namespace zorvane
