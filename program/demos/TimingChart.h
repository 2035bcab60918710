#pragma once
// TimingChart: the fine times of a TimingTable as bars, one group per test and one colour per
// contender. It only looks at the table; whoever changes the table calls update().

#include <QRectF>
#include <QWidget>
#include <cstdint>
#include <set>

#include "program/demos/ChartScale.h"

namespace zorvane {

class TimingTable;

class TimingChart : public QWidget {
    Q_OBJECT
  public:
    explicit TimingChart(const TimingTable& table, QWidget* parent = nullptr);

    // Where the bar of a result stands (test 1..8, column 1..4); empty when there is no result.
    [[nodiscard]] QRectF BarOf(int test, int column) const;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QColor ColourOf(int column) const;
    [[nodiscard]] QRectF GroupOf(int test) const;
    [[nodiscard]] bool HasResults() const;
    [[nodiscard]] std::set<std::int32_t> ItemCounts() const;
    void PaintAxis(QPainter& painter, const ChartScale& scale) const;
    void PaintBars(QPainter& painter) const;
    void PaintLegend(QPainter& painter, const ChartScale& scale) const;
    [[nodiscard]] QRectF Plot() const;
    [[nodiscard]] ChartScale Scale() const;

    const TimingTable& table_;
};

}  // namespace zorvane
