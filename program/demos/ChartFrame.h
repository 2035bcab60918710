#pragma once
// ChartFrame: what the pages of the chart have alike: paper, title, legend and an axis of
// durations. It measures once and then paints onto any device: a window, a picture, a drawing.
//
// A chart reads from left to right, whatever the direction of the window around it.

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

#include "program/demos/ChartScale.h"
#include "zorvane/platform/Text.h"

class QPainter;

namespace zorvane {

struct FineTime;

// Whether a loop is drawn by its whole time or by that of one operation.
enum class ChartUnit { Total, Operation };
[[nodiscard]] double SecondsOf(const FineTime& fine, ChartUnit unit);

struct ChartLook {
    QRectF Area;
    QPalette Palette;
    QFont Font;

    [[nodiscard]] QColor ColourOf(int column) const;  // a contender's
    [[nodiscard]] QColor Faint(double share) const;   // so much of the text on the paper
};

class ChartFrame {
  public:
    struct Entry {
        QString Name;
        std::function<void(QPainter& painter, const QRectF& box)> Mark;
    };

    ChartFrame(ChartLook look, ChartScale scale, QString title, std::vector<Entry> legend);

    [[nodiscard]] const ChartLook& Look() const noexcept { return look_; }
    [[nodiscard]] QRectF Plot() const noexcept { return plot_; }
    [[nodiscard]] double YOf(double seconds) const;

    // An empty paper with a hint on it.
    static void PaintHint(QPainter& painter, const ChartLook& look, const QString& hint);
    // Everything but what stands in the plot and below it.
    void Paint(QPainter& painter) const;
    // A name of up to two lines below the plot, in the middle of `width`.
    void PaintBelow(QPainter& painter, double x, double width, const QString& name) const;

    // The least room that a chart with so many names below it can be read in.
    [[nodiscard]] static QSizeF LeastSize(const QFont& font, const QStringList& below);

  private:
    void LayOutLegend();

    ChartLook look_;
    ChartScale scale_;
    QString title_;
    std::vector<Entry> legend_;
    std::vector<QPointF> entries_;  // where each entry's line begins
    QRectF plot_;
};

// One page of the chart, for what is on the table now.
class ChartPage {
  public:
    virtual ~ChartPage() = default;
    virtual void Paint(QPainter& painter) const = 0;
    // What a pointer resting there tells; empty where there is nothing.
    [[nodiscard]] virtual Text TipAt(QPointF at) const = 0;
};

}  // namespace zorvane
