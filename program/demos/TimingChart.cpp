#include "program/demos/TimingChart.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>
#include <vector>

#include "program/demos/TimingTable.h"
#include "program/forms/Strings.h"

namespace zorvane {
namespace {

constexpr int kEdge = 10;

// A colour between two, `share` of it the second.
QColor Between(const QColor& one, const QColor& other, double share) {
    const auto mixed = [&](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mixed(one.red(), other.red()), mixed(one.green(), other.green()),
            mixed(one.blue(), other.blue())};
}

}  // namespace

TimingChart::TimingChart(const TimingTable& table, QWidget* parent)
    : QWidget(parent), table_(table) {
    setObjectName(QStringLiteral("Chart"));
    setAccessibleName(QStringLiteral("Chart of the times of each test"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize TimingChart::minimumSizeHint() const {
    return {34 * fontMetrics().averageCharWidth() * 2, 10 * fontMetrics().height()};
}

QSize TimingChart::sizeHint() const {
    return {minimumSizeHint().width(), 17 * fontMetrics().height()};
}

QColor TimingChart::ColourOf(int column) const {
    return QColor::fromRgb(ContenderColour(column, palette().base().color().lightness() < 128));
}

ChartScale TimingChart::Scale() const {
    std::vector<double> seconds;
    for (const TimingTest& test : kTimingTests) {
        for (int column = 1; column < TimingTable::kColumns; ++column) {
            if (const auto fine = table_.Fine(test.Row, column)) seconds.push_back(fine->Seconds);
        }
    }
    return ChartScale(seconds);
}

bool TimingChart::HasResults() const {
    return !Scale().Marks().empty();
}

std::set<std::int32_t> TimingChart::ItemCounts() const {
    std::set<std::int32_t> counts;
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        if (table_.Items(column) != 0) counts.insert(table_.Items(column));
    }
    return counts;
}

QRectF TimingChart::Plot() const {
    const int line = fontMetrics().height();
    const int labels = fontMetrics().horizontalAdvance(QStringLiteral("000 ms")) + 8;
    // Title and legend above, two lines of test names below.
    return QRectF(rect()).adjusted(kEdge + labels, kEdge + 3 * line, -kEdge, -kEdge - 2.2 * line);
}

QRectF TimingChart::GroupOf(int test) const {
    const QRectF plot = Plot();
    const double width = plot.width() / static_cast<double>(kTimingTests.size());
    return {plot.left() + (test - 1) * width, plot.top(), width, plot.height()};
}

QRectF TimingChart::BarOf(int test, int column) const {
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
    const double height = group.height() * Scale().HeightOf(fine->Seconds);
    return {left, group.bottom() - height, width, height};
}

bool TimingChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    for (const TimingTest& test : kTimingTests) {
        for (int column = 1; column < TimingTable::kColumns; ++column) {
            // Anywhere above a short bar will do.
            QRectF bar = BarOf(test.Number, column);
            if (bar.isEmpty()) continue;
            bar.setTop(Plot().top());
            if (!bar.contains(help->pos())) continue;
            QToolTip::showText(help->globalPos(), ToQString(table_.ToolTip(test.Row, column)),
                               this);
            return true;
        }
    }
    QToolTip::hideText();
    return true;
}

void TimingChart::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.setPen(Between(palette().base().color(), palette().text().color(), 0.3));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (!HasResults()) {
        painter.setPen(palette().text().color());
        painter.drawText(rect().adjusted(kEdge, kEdge, -kEdge, -kEdge),
                         Qt::AlignCenter | Qt::TextWordWrap,
                         QStringLiteral("Press a container's button to see its times drawn here."));
        return;
    }
    const ChartScale scale = Scale();
    PaintAxis(painter, scale);
    PaintBars(painter);
    PaintLegend(painter, scale);
}

void TimingChart::PaintAxis(QPainter& painter, const ChartScale& scale) const {
    const QRectF plot = Plot();
    const QColor base = palette().base().color();
    const QColor text = palette().text().color();
    const double line = fontMetrics().height();
    for (const ChartScale::Mark& mark : scale.Marks()) {
        const double y = std::round(plot.bottom() - plot.height() * scale.HeightOf(mark.Seconds));
        painter.setPen(Between(base, text, mark.Label.Empty() ? 0.08 : 0.25));
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.setPen(text);
        painter.drawText(QRectF(0, y - line / 2, plot.left() - 6, line),
                         Qt::AlignRight | Qt::AlignVCenter, ToQString(mark.Label));
    }
    for (const TimingTest& test : kTimingTests) {
        const QRectF group = GroupOf(test.Number);
        painter.drawText(QRectF(group.left(), plot.bottom() + 4, group.width(), 2.2 * line),
                         Qt::AlignHCenter | Qt::AlignTop, ToQString(test.ShortName));
    }
}

void TimingChart::PaintBars(QPainter& painter) const {
    for (const TimingTest& test : kTimingTests) {
        for (int column = 1; column < TimingTable::kColumns; ++column) {
            const QRectF bar = BarOf(test.Number, column);
            if (!bar.isEmpty()) painter.fillRect(bar.adjusted(1, 0, -1, 0), ColourOf(column));
        }
    }
}

void TimingChart::PaintLegend(QPainter& painter, const ChartScale& scale) const {
    const double line = fontMetrics().height();
    const double box = line * 0.7;
    painter.setPen(palette().text().color());
    const std::set<std::int32_t> counts = ItemCounts();
    QString title = QStringLiteral("Each test by a finer clock than the table's");
    if (counts.size() == 1) {
        title += QStringLiteral(", with %1 items").arg(ToQString(GroupedText(*counts.begin())));
    }
    if (scale.Logarithmic()) title += QStringLiteral("; logarithmic scale");
    painter.drawText(QRectF(kEdge, kEdge - 4, width() - 2 * kEdge, line), Qt::AlignLeft, title);
    double left = Plot().left();
    const double top = kEdge + 1.2 * line;
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        if (table_.Items(column) == 0) continue;
        QString name = ToQString(TimingTable::ColumnCaption(column));
        // Columns of different sizes do not compare: say which is which.
        if (counts.size() > 1) {
            name += QStringLiteral(" (%1)").arg(ToQString(GroupedText(table_.Items(column))));
        }
        painter.fillRect(QRectF(left, top + (line - box) / 2, box, box), ColourOf(column));
        left += box + 5;
        const double wide = fontMetrics().horizontalAdvance(name);
        painter.drawText(QRectF(left, top, wide + 1, line), Qt::AlignLeft, name);
        left += wide + 16;
    }
}

}  // namespace zorvane
