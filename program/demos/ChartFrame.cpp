#include "program/demos/ChartFrame.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "program/demos/TimingRun.h"
#include "program/forms/Strings.h"

namespace zorvane {
namespace {

constexpr double kEdge = 10;
constexpr double kGap = 6;  // between a mark and its text

double BoxOf(const QFontMetricsF& metrics) {
    return std::round(metrics.height() * 0.7);
}

// Paper with its border; what follows is painted in the colour and the direction of its text.
void PaintPaper(QPainter& painter, const ChartLook& look) {
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setFont(look.Font);
    painter.fillRect(look.Area, look.Faint(0.3));
    painter.fillRect(look.Area.adjusted(1, 1, -1, -1), look.Palette.base());
    painter.setPen(look.Palette.text().color());
}

}  // namespace

double SecondsOf(const FineTime& fine, ChartUnit unit) {
    return unit == ChartUnit::Total ? fine.Seconds : fine.SecondsEach();
}

QColor ChartLook::ColourOf(int column) const {
    return QColor::fromRgb(ContenderColour(column, Palette.base().color().lightness() < 128));
}

QColor ChartLook::Faint(double share) const {
    const QColor base = Palette.base().color();
    const QColor text = Palette.text().color();
    const auto mixed = [&](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mixed(base.red(), text.red()), mixed(base.green(), text.green()),
            mixed(base.blue(), text.blue())};
}

ChartFrame::ChartFrame(ChartLook look, ChartScale scale, QString title, std::vector<Entry> legend)
    : look_(std::move(look)),
      scale_(std::move(scale)),
      title_(std::move(title)),
      legend_(std::move(legend)) {
    const QFontMetricsF metrics(look_.Font);
    double labels = 0;
    for (const ChartScale::Mark& mark : scale_.Marks()) {
        labels = std::max(labels, metrics.horizontalAdvance(ToQString(mark.Label)));
    }
    LayOutLegend();
    const double top = entries_.empty() ? look_.Area.top() + kEdge : entries_.back().y();
    plot_ = look_.Area.adjusted(kEdge + labels + kGap, 0, -kEdge, -kEdge - 2.2 * metrics.height());
    plot_.setTop(top + 1.8 * metrics.height());
}

// As many lines below the title as the entries need.
void ChartFrame::LayOutLegend() {
    const QFontMetricsF metrics(look_.Font);
    const double left = look_.Area.left() + kEdge;
    QPointF next(left, look_.Area.top() + kEdge - 4 + 1.3 * metrics.height());
    for (const Entry& entry : legend_) {
        const double wide =
            BoxOf(metrics) + kGap + metrics.horizontalAdvance(entry.Name) + 2 * kGap;
        if (next.x() > left && next.x() + wide - 2 * kGap > look_.Area.right() - kEdge) {
            next = QPointF(left, next.y() + 1.2 * metrics.height());
        }
        entries_.push_back(next);
        next.rx() += wide;
    }
}

double ChartFrame::YOf(double seconds) const {
    return plot_.bottom() - plot_.height() * scale_.HeightOf(seconds);
}

void ChartFrame::PaintHint(QPainter& painter, const ChartLook& look, const QString& hint) {
    PaintPaper(painter, look);
    painter.drawText(look.Area.adjusted(kEdge, kEdge, -kEdge, -kEdge),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
}

void ChartFrame::Paint(QPainter& painter) const {
    PaintPaper(painter, look_);
    const QFontMetricsF metrics(look_.Font);
    const double line = metrics.height();
    const QRectF top(look_.Area.left() + kEdge, look_.Area.top() + kEdge - 4,
                     look_.Area.width() - 2 * kEdge, line);
    painter.drawText(top, Qt::AlignLeft, metrics.elidedText(title_, Qt::ElideRight, top.width()));
    const double box = BoxOf(metrics);
    for (std::size_t i = 0; i < legend_.size(); ++i) {
        const QPointF at = entries_[i];
        legend_[i].Mark(painter, QRectF(at.x(), std::round(at.y() + (line - box) / 2), box, box));
        painter.setPen(look_.Palette.text().color());
        painter.drawText(QRectF(at.x() + box + kGap, at.y(), look_.Area.width(), line),
                         Qt::AlignLeft, legend_[i].Name);
    }
    // Where decades stand close together, every second or third of them is written.
    double written = plot_.bottom() + 2 * line;
    for (const ChartScale::Mark& mark : scale_.Marks()) {
        const double y = std::round(YOf(mark.Seconds));
        painter.setPen(look_.Faint(mark.Label.Empty() ? 0.08 : 0.25));
        painter.drawLine(QPointF(plot_.left(), y), QPointF(plot_.right(), y));
        if (mark.Label.Empty() || written - y < line) continue;
        written = y;
        painter.setPen(look_.Palette.text().color());
        painter.drawText(
            QRectF(look_.Area.left(), y - line / 2, plot_.left() - kGap - look_.Area.left(), line),
            Qt::AlignRight | Qt::AlignVCenter, ToQString(mark.Label));
    }
}

void ChartFrame::PaintBelow(QPainter& painter, double x, double width, const QString& name) const {
    painter.setPen(look_.Palette.text().color());
    painter.drawText(
        QRectF(x - width / 2, plot_.bottom() + 4, width, look_.Area.bottom() - plot_.bottom() - 4),
        Qt::AlignHCenter | Qt::AlignTop, name);
}

QSizeF ChartFrame::LeastSize(const QFont& font, const QStringList& below) {
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (const QString& name : below) {
        for (const QString& part : name.split(QLatin1Char('\n'))) {
            widest = std::max(widest, metrics.horizontalAdvance(part));
        }
    }
    const double labels = metrics.horizontalAdvance(QStringLiteral("000 ms")) + kGap;
    return {labels + 2 * kEdge + static_cast<double>(below.size()) * (widest + kGap),
            9.5 * metrics.height() + 2 * kEdge};
}

}  // namespace zorvane
