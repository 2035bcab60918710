#pragma once
// TestsChart: the fine times of a TimingTable as bars, one group per test and one colour per
// contender.
//
// Bars of runs with another number of items than the last are hatched, and one whose time stands
// in no cell of the table is an outline.

#include "program/demos/ChartFrame.h"

namespace zorvane {

class TimingTable;

class TestsChart : public ChartPage {
  public:
    TestsChart(const TimingTable& table, ChartUnit unit, const ChartLook& look);

    // Where the bar of a result stands (test 1..8, column 1..4); empty when there is no result.
    [[nodiscard]] QRectF BarOf(int test, int column) const;
    void Paint(QPainter& painter) const override;
    [[nodiscard]] Text TipAt(QPointF at) const override;

  private:
    [[nodiscard]] QRectF GroupOf(int test) const;

    const TimingTable& table_;
    ChartUnit unit_;
    ChartFrame frame_;
};

}  // namespace zorvane
