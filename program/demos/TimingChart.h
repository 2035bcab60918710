#pragma once
// TimingChart: the chart of the timing window, on one of two pages: the times in the table, or how
// one test grows with the number of items. It only looks at both; whoever changes them calls
// update().

#include <QWidget>
#include <memory>

#include "program/demos/ChartFrame.h"

class QIODevice;
class QImage;

namespace zorvane {

class Growth;
class TimingTable;

class TimingChart : public QWidget {
    Q_OBJECT
  public:
    enum class Page { Tests, Growth };

    TimingChart(const TimingTable& table, const Growth& growth, QWidget* parent = nullptr);

    // As shown, with two pixels for one.
    [[nodiscard]] QImage Picture() const;
    // Where the bar of a result stands on the page of tests (test 1..8, column 1..4); empty when
    // there is no result.
    [[nodiscard]] QRectF BarOf(int test, int column) const;
    void SetGrowthTest(int test);  // 1..8
    void SetPage(Page page);
    void SetUnit(ChartUnit unit);
    [[nodiscard]] Page ShownPage() const noexcept { return page_; }
    // Writes what is shown as scalable vector graphics.
    void WriteDrawing(QIODevice& to) const;

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] ChartLook Look() const;
    [[nodiscard]] std::unique_ptr<ChartPage> Shown() const;

    const TimingTable& table_;
    const Growth& growth_;
    Page page_ = Page::Tests;
    ChartUnit unit_ = ChartUnit::Total;
    int growthTest_ = 1;
};

}  // namespace zorvane
