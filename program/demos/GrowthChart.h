#pragma once
// GrowthChart: the times of one test against the number of items, one line per contender.
//
// Equal steps to the right are equal factors.

#include "program/demos/ChartFrame.h"

namespace zorvane {

class Growth;

class GrowthChart : public ChartPage {
  public:
    // Test 1..8.
    GrowthChart(const Growth& growth, int test, ChartUnit unit, const ChartLook& look);

    void Paint(QPainter& painter) const override;
    [[nodiscard]] Text TipAt(QPointF at) const override;

  private:
    // Where a contender stands with Growth::kSizes[size] items; a null point before it is timed.
    [[nodiscard]] QPointF PointOf(int column, std::size_t size) const;
    [[nodiscard]] double XOf(std::size_t size) const;

    const Growth& growth_;
    int test_;
    ChartUnit unit_;
    ChartFrame frame_;
};

}  // namespace zorvane
