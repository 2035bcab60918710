#pragma once
// ChartPane: the chart and the row of controls above it: its page, the unit of its axis, and on the
// page of growth the test and the button that measures.

#include <QWidget>

class QComboBox;
class QPushButton;
class QTabBar;

namespace zorvane {

class Growth;
class TimingChart;
class TimingTable;

class ChartPane : public QWidget {
    Q_OBJECT
  public:
    ChartPane(const TimingTable& table, const Growth& growth, QWidget* parent = nullptr);

    [[nodiscard]] TimingChart& Chart() const { return *chart_; }
    // In the order of the Tab key.
    [[nodiscard]] QList<QWidget*> Controls() const;

  Q_SIGNALS:
    void MeasureRequested();

  private:
    void ShowPage(int tab);

    TimingChart* chart_;
    QTabBar* pages_;
    QComboBox* unit_;
    QComboBox* test_;
    QPushButton* measure_;
};

}  // namespace zorvane
