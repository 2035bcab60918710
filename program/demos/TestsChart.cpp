#include "program/demos/TestsChart.h"

#include <QPainter>
#include <algorithm>
#include <set>

#include "program/demos/TimingTable.h"
#include "program/forms/Strings.h"

namespace zorvane {
namespace {

template <class Visitor>
void EachResult(const TimingTable& table, Visitor visitor) {
    for (const TimingTest& test : kTimingTests) {
        for (int column = 1; column < TimingTable::kColumns; ++column) {
            if (const auto fine = table.Fine(test.Row, column)) visitor(test, column, *fine);
        }
    }
}

ChartScale ScaleOf(const TimingTable& table, ChartUnit unit) {
    std::vector<double> seconds;
    EachResult(table, [&](const TimingTest&, int, const FineTime& fine) {
        seconds.push_back(SecondsOf(fine, unit));
    });
    return ChartScale(seconds);
}

std::set<std::int32_t> ItemCounts(const TimingTable& table) {
    std::set<std::int32_t> counts;
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        if (table.Items(column) != 0) counts.insert(table.Items(column));
    }
    return counts;
}

QString TitleOf(const TimingTable& table, ChartUnit unit) {
    QString title = unit == ChartUnit::Total ? QStringLiteral("Each test")
                                             : QStringLiteral("One operation of each test");
    title += QStringLiteral(" by a finer clock than the table's, with ");
    const std::set<std::int32_t> counts = ItemCounts(table);
    title += counts.size() == 1 ? ToQString(GroupedText(*counts.begin())) + QStringLiteral(" items")
                                : QStringLiteral("different numbers of items");
    if (ScaleOf(table, unit).Logarithmic()) title += QStringLiteral("; logarithmic scale");
    return title;
}

enum class Fill { Solid, Hatched, Outline };

// Lines of our own: a brush's pattern is too fine where pixels are small.
void PaintHatches(QPainter& painter, const QRectF& bar, const QColor& colour) {
    constexpr double kApart = 6;
    painter.setPen(QPen(colour, 1));
    for (double c = kApart / 2; c < bar.width() + bar.height(); c += kApart) {
        const QPointF from(std::max(0.0, c - bar.height()), -std::min(c, bar.height()));
        const QPointF to(std::min(c, bar.width()), -std::max(0.0, c - bar.width()));
        painter.drawLine(bar.bottomLeft() + from, bar.bottomLeft() + to);
    }
}

void PaintBar(QPainter& painter, const QRectF& bar, const QColor& colour, Fill fill) {
    if (fill == Fill::Solid) {
        painter.fillRect(bar, colour);
        return;
    }
    if (fill == Fill::Hatched) PaintHatches(painter, bar, colour);
    painter.setPen(QPen(colour, 1, fill == Fill::Outline ? Qt::DashLine : Qt::SolidLine));
    painter.drawRect(bar.adjusted(0.5, 0.5, -0.5, -0.5));
}

Fill FillOf(const TimingTable& table, int column) {
    return table.Items(column) == table.LastItems() ? Fill::Solid : Fill::Hatched;
}

std::vector<ChartFrame::Entry> LegendOf(const TimingTable& table, const ChartLook& look) {
    std::vector<ChartFrame::Entry> legend;
    const auto add = [&](const QString& name, const QColor& colour, Fill fill) {
        legend.push_back({name, [colour, fill](QPainter& painter, const QRectF& box) {
                              PaintBar(painter, box, colour, fill);
                          }});
    };
    const bool differ = ItemCounts(table).size() > 1;
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        if (table.Items(column) == 0) continue;
        QString name = ToQString(TimingTable::ColumnCaption(column));
        if (differ) {
            name += QStringLiteral(" (%1)").arg(ToQString(GroupedText(table.Items(column))));
        }
        add(name, look.ColourOf(column), FillOf(table, column));
    }
    EachResult(table, [&](const TimingTest& test, int column, const FineTime&) {
        if (!table.FineAlone(test.Row, column)) return;
        add(QStringLiteral("by the finer clock alone"), look.ColourOf(column), Fill::Outline);
    });
    return legend;
}

}  // namespace

TestsChart::TestsChart(const TimingTable& table, ChartUnit unit, const ChartLook& look)
    : table_(table),
      unit_(unit),
      frame_(look, ScaleOf(table, unit), TitleOf(table, unit), LegendOf(table, look)) {}

QRectF TestsChart::GroupOf(int test) const {
    const QRectF plot = frame_.Plot();
    const double width = plot.width() / static_cast<double>(kTimingTests.size());
    return {plot.left() + (test - 1) * width, plot.top(), width, plot.height()};
}

QRectF TestsChart::BarOf(int test, int column) const {
    const auto fine = table_.Fine(kTimingTests.at(static_cast<std::size_t>(test) - 1).Row, column);
    if (!fine || !(fine->Seconds > 0)) return {};
    const QRectF group = GroupOf(test);
    // Only contenders with results take room, in the middle of the group.
    int before = 0;
    int shown = 0;
    for (int each = 1; each < TimingTable::kColumns; ++each) {
        if (table_.Items(each) == 0) continue;
        ++shown;
        if (each < column) ++before;
    }
    const double width = group.width() * 0.8 / (TimingTable::kColumns - 1);
    const double left = group.center().x() + (before - shown / 2.0) * width;
    const double top = frame_.YOf(SecondsOf(*fine, unit_));
    return {left, top, width, group.bottom() - top};
}

void TestsChart::Paint(QPainter& painter) const {
    if (ItemCounts(table_).empty()) {
        ChartFrame::PaintHint(
            painter, frame_.Look(),
            QStringLiteral("Press a container's button to see its times drawn here."));
        return;
    }
    frame_.Paint(painter);
    EachResult(table_, [&](const TimingTest& test, int column, const FineTime&) {
        const QRectF bar = BarOf(test.Number, column);
        if (bar.isEmpty()) return;
        const Fill fill =
            table_.FineAlone(test.Row, column) ? Fill::Outline : FillOf(table_, column);
        PaintBar(painter, bar.adjusted(1, 0, -1, 0), frame_.Look().ColourOf(column), fill);
    });
    for (const TimingTest& test : kTimingTests) {
        const QRectF group = GroupOf(test.Number);
        frame_.PaintBelow(painter, group.center().x(), group.width(), ToQString(test.ShortName));
    }
}

Text TestsChart::TipAt(QPointF at) const {
    Text tip;
    EachResult(table_, [&](const TimingTest& test, int column, const FineTime&) {
        // Anywhere above a short bar will do.
        QRectF bar = BarOf(test.Number, column);
        if (bar.isEmpty()) return;
        bar.setTop(frame_.Plot().top());
        if (bar.contains(at)) tip = table_.ToolTip(test.Row, column);
    });
    return tip;
}

}  // namespace zorvane
