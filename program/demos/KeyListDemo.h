#pragma once
// KeyListDemo: the key list that the demonstration window shows, without the window.

#include <array>
#include <cstdint>

#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Random.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

class KeyListDemo {
  public:
    static constexpr std::int32_t kRecords = 1000;
    static constexpr int kColumns = 5;
    using Row = std::array<Text, kColumns>;

    static const Text& Description();
    static Text ColumnCaption(int column);  // 0..4

    // Adds records until there are kRecords, with items drawn from `random`.
    void Fill(Random& random);
    // Orders by what button 0..3 stands for: key, item, string item, long item; any other is 0.
    void ReSort(int button, bool descending = false);
    // Position, key, item, string item and long item of a record; raises 28500 outside 1..Count().
    [[nodiscard]] Row RowAt(std::int32_t position);
    [[nodiscard]] std::int32_t Count() const noexcept { return list_.Count(); }

    // The list column that a button orders by, and the button for a column; for the positions it is
    // that of the keys, whose order they count.
    [[nodiscard]] static int ColumnOfButton(int button) noexcept;
    [[nodiscard]] static int ButtonOfColumn(int column) noexcept;

  private:
    KeyListEX list_;
};

}  // namespace zorvane
