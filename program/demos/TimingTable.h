#pragma once
// TimingTable: the fourteen rows and four result columns of the timing comparison, without a list.
//
// Rows count from 1 and result columns are 1 to 4, as Contender numbers them; column 0 describes.

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "program/demos/TimingRun.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

// What one test is called, where there is room for a line and where there is not.
struct TimingTest {
    int Number;                 // 1..8, as TimingResult counts
    int Row;                    // which describes it in one line
    const char16_t* ShortName;  // with a line break
};
inline constexpr std::array<TimingTest, 8> kTimingTests{{
    {1, 1, u"Add"},
    {2, 2, u"Item\nby string"},
    {3, 3, u"Item\nby index"},
    {4, 4, u"Item\nabsent key"},
    {5, 7, u"For Each"},
    {6, 8, u"For Next"},
    {7, 10, u"Remove\nby string"},
    {8, 11, u"Remove\nby index"},
}};

class TimingTable {
  public:
    static constexpr int kRows = 14;
    static constexpr int kColumns = 5;
    static constexpr int kClearedRows = 11;  // results never reach the others

    [[nodiscard]] static Text ColumnCaption(int column);  // 0..4
    [[nodiscard]] static Text Description(int row);
    [[nodiscard]] static float ColumnWidth(int column);  // twips

    // Empties rows 1 to kClearedRows of a result column and forgets its item count.
    void ClearColumn(int column);
    void Set(int column, std::int32_t items, const TimingCell& cell);

    [[nodiscard]] Text Shown(int row, int column) const { return At(row, column).Shown; }
    [[nodiscard]] std::optional<FineTime> Fine(int row, int column) const {
        return At(row, column).Fine;
    }
    // The fine time with its unit; empty where there is none.
    [[nodiscard]] Text FinerShown(int row, int column) const;
    // How many items the results of a column stand for; 0 while it has none.
    [[nodiscard]] std::int32_t Items(int column) const {
        return items_.at(static_cast<std::size_t>(column));
    }
    // How many items the run that began last was for; 0 before the first.
    [[nodiscard]] std::int32_t LastItems() const noexcept { return lastItems_; }
    // Whether a result is known to the fine clock alone.
    [[nodiscard]] bool FineAlone(int row, int column) const;
    // What a pointer resting on a result, or on the heading of a column, tells; empty where there
    // is none.
    [[nodiscard]] Text ToolTip(int row, int column) const;
    [[nodiscard]] Text ColumnToolTip(int column) const;

    // For other programs: a heading and a line per described row, with the results as stated, the
    // fine milliseconds and the nanoseconds per operation of every contender; then their numbers of
    // items.
    [[nodiscard]] std::vector<std::vector<Text>> Lines() const;
    [[nodiscard]] Text AsCsv() const;     // quoted where needed, lines end in CR LF
    [[nodiscard]] Text AsHtml() const;    // one table
    [[nodiscard]] Text AsTabbed() const;  // tab-separated

  private:
    struct Cell {
        Text Shown;
        std::optional<FineTime> Fine;
    };
    [[nodiscard]] const Cell& At(int row, int column) const {
        return cells_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    }

    std::array<std::array<Cell, kColumns>, kRows + 1> cells_;
    std::array<std::int32_t, kColumns> items_{};
    std::int32_t lastItems_ = 0;
};

// A duration with three digits and a unit that suits it: "843 ns", "12.4 ms", "1.60 s".
[[nodiscard]] Text DurationText(double seconds);
// "2.00 ms for 1,000 operations, 2.00 µs each".
[[nodiscard]] Text FineTimeText(const FineTime& fine);
// A whole number with commas between thousands.
[[nodiscard]] Text GroupedText(std::int64_t value);

}  // namespace zorvane
