#include "program/demos/TimingChart.h"

#include <QHelpEvent>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <QToolTip>

#include "program/demos/GrowthChart.h"
#include "program/demos/TestsChart.h"
#include "program/demos/TimingTable.h"
#include "program/forms/Strings.h"

namespace zorvane {

TimingChart::TimingChart(const TimingTable& table, const Growth& growth, QWidget* parent)
    : QWidget(parent), table_(table), growth_(growth) {
    setObjectName(QStringLiteral("Chart"));
    setAccessibleName(QStringLiteral("Chart of the times of each test"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QImage TimingChart::Picture() const {
    constexpr int kSharp = 2;
    constexpr double kInchesInAMetre = 1 / 0.0254;
    QImage picture(size() * kSharp, QImage::Format_RGB32);
    picture.setDevicePixelRatio(kSharp);
    // A font's points become as many pixels as on the screen.
    picture.setDotsPerMeterX(static_cast<int>(logicalDpiX() * kInchesInAMetre));
    picture.setDotsPerMeterY(static_cast<int>(logicalDpiY() * kInchesInAMetre));
    QPainter painter(&picture);
    Shown()->Paint(painter);
    return picture;
}

QRectF TimingChart::BarOf(int test, int column) const {
    return TestsChart(table_, unit_, Look()).BarOf(test, column);
}

void TimingChart::SetGrowthTest(int test) {
    growthTest_ = test;
    update();
}

void TimingChart::SetPage(Page page) {
    page_ = page;
    update();
}

void TimingChart::SetUnit(ChartUnit unit) {
    unit_ = unit;
    update();
}

void TimingChart::WriteDrawing(QIODevice& to) const {
    QSvgGenerator drawing;
    drawing.setOutputDevice(&to);
    drawing.setTitle(accessibleName());
    drawing.setSize(size());
    drawing.setViewBox(rect());
    drawing.setResolution(logicalDpiY());
    QPainter painter(&drawing);
    Shown()->Paint(painter);
}

QSize TimingChart::minimumSizeHint() const {
    QStringList names;
    for (const TimingTest& test : kTimingTests) names << ToQString(test.ShortName);
    return ChartFrame::LeastSize(font(), names).toSize();
}

QSize TimingChart::sizeHint() const {
    return {minimumSizeHint().width(), 17 * fontMetrics().height()};
}

bool TimingChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), ToQString(Shown()->TipAt(help->pos())), this);
    return true;
}

void TimingChart::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Shown()->Paint(painter);
}

ChartLook TimingChart::Look() const {
    return {rect(), palette(), font()};
}

std::unique_ptr<ChartPage> TimingChart::Shown() const {
    if (page_ == Page::Growth) {
        return std::make_unique<GrowthChart>(growth_, growthTest_, unit_, Look());
    }
    return std::make_unique<TestsChart>(table_, unit_, Look());
}

}  // namespace zorvane
