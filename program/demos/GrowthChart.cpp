#include "program/demos/GrowthChart.h"

#include <QPainter>
#include <QPolygonF>
#include <cmath>

#include "program/demos/Growth.h"
#include "program/demos/TimingTable.h"
#include "program/forms/Strings.h"

namespace zorvane {
namespace {

// Lines that lie on one another are all seen: each is thinner than the one before it.
constexpr std::array kWidths{3.5, 3.0, 2.5, 1.5};
constexpr std::array kReaches{5.5, 5.0, 5.0, 3.5};  // of a point, to every side

template <class Visitor>
void EachSize(Visitor visitor) {
    for (std::size_t size = 0; size < Growth::kSizes.size(); ++size) visitor(size);
}

ChartScale ScaleOf(const Growth& growth, int test, ChartUnit unit) {
    std::vector<double> seconds;
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        EachSize([&](std::size_t size) {
            if (const auto fine = growth.At(test, column, size)) {
                seconds.push_back(SecondsOf(*fine, unit));
            }
        });
    }
    return ChartScale(seconds);
}

QString TitleOf(const Growth& growth, int test, ChartUnit unit) {
    const int row = kTimingTests.at(static_cast<std::size_t>(test) - 1).Row;
    QString title = ToQString(TimingTable::Description(row));
    title += unit == ChartUnit::Total ? QStringLiteral(": the whole test")
                                      : QStringLiteral(": one operation");
    title += QStringLiteral(" with 50 to 10,000 items");
    if (ScaleOf(growth, test, unit).Logarithmic()) title += QStringLiteral("; logarithmic scales");
    return title;
}

// A shape for each contender, so that lines on one another can be told apart without their colour.
void PaintPoint(QPainter& painter, const QPointF& at, int column, const QColor& colour) {
    const double r = kReaches.at(static_cast<std::size_t>(column) - 1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    switch (column) {
        case 1:
            painter.drawEllipse(at, r, r);
            break;
        case 2:
            painter.drawRect(QRectF(at.x() - r, at.y() - r, 2 * r, 2 * r));
            break;
        case 3:
            painter.drawPolygon(
                QPolygonF({at + QPointF(0, -r), at + QPointF(r, r), at + QPointF(-r, r)}));
            break;
        default:
            painter.drawPolygon(QPolygonF({at + QPointF(0, -r), at + QPointF(r, 0),
                                           at + QPointF(0, r), at + QPointF(-r, 0)}));
    }
    painter.setBrush(Qt::NoBrush);
}

std::vector<ChartFrame::Entry> LegendOf(const ChartLook& look) {
    std::vector<ChartFrame::Entry> legend;
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        const QColor colour = look.ColourOf(column);
        legend.push_back({ToQString(TimingTable::ColumnCaption(column)),
                          [column, colour](QPainter& painter, const QRectF& box) {
                              PaintPoint(painter, box.center(), column, colour);
                          }});
    }
    return legend;
}

}  // namespace

GrowthChart::GrowthChart(const Growth& growth, int test, ChartUnit unit, const ChartLook& look)
    : growth_(growth),
      test_(test),
      unit_(unit),
      frame_(look, ScaleOf(growth, test, unit), TitleOf(growth, test, unit), LegendOf(look)) {}

double GrowthChart::XOf(std::size_t size) const {
    constexpr double kAside = 20;  // the outermost names keep to the paper
    const QRectF plot = frame_.Plot();
    const double share = std::log(1.0 * Growth::kSizes.at(size) / Growth::kSizes.front()) /
                         std::log(1.0 * Growth::kSizes.back() / Growth::kSizes.front());
    return plot.left() + kAside + share * (plot.width() - 2 * kAside);
}

QPointF GrowthChart::PointOf(int column, std::size_t size) const {
    const auto fine = growth_.At(test_, column, size);
    return fine ? QPointF(XOf(size), frame_.YOf(SecondsOf(*fine, unit_))) : QPointF();
}

void GrowthChart::Paint(QPainter& painter) const {
    if (!growth_.Measured()) {
        ChartFrame::PaintHint(
            painter, frame_.Look(),
            QStringLiteral("Press Measure to time every test with 50 to 10,000 items."));
        return;
    }
    frame_.Paint(painter);
    const QRectF plot = frame_.Plot();
    EachSize([&](std::size_t size) {
        const double x = std::round(XOf(size));
        painter.setPen(frame_.Look().Faint(0.08));
        painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
        const bool last = size + 1 == Growth::kSizes.size();
        frame_.PaintBelow(painter, x, 100,
                          ToQString(GroupedText(Growth::kSizes.at(size))) +
                              (last ? QStringLiteral("\nitems") : QString()));
    });
    painter.setRenderHint(QPainter::Antialiasing);
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        const QColor colour = frame_.Look().ColourOf(column);
        QPolygonF line;
        EachSize([&](std::size_t size) {
            if (const QPointF at = PointOf(column, size); !at.isNull()) line << at;
        });
        painter.setPen(QPen(colour, kWidths.at(static_cast<std::size_t>(column) - 1)));
        painter.drawPolyline(line);
        for (const QPointF& at : line) PaintPoint(painter, at, column, colour);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// The nearest point tells, if the pointer is near it.
Text GrowthChart::TipAt(QPointF at) const {
    double nearest = 12;
    Text tip;
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        EachSize([&](std::size_t size) {
            const auto fine = growth_.At(test_, column, size);
            const QPointF away = at - PointOf(column, size);
            const double distance = std::hypot(away.x(), away.y());
            if (!fine || distance >= nearest) return;
            nearest = distance;
            tip = TimingTable::ColumnCaption(column) + u", " +
                  GroupedText(Growth::kSizes.at(size)) + u" items\n" + FineTimeText(*fine);
        });
    }
    return tip;
}

}  // namespace zorvane
