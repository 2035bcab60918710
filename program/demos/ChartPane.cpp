#include "program/demos/ChartPane.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabBar>
#include <QToolTip>
#include <QVBoxLayout>

#include "program/demos/TimingChart.h"
#include "program/demos/TimingTable.h"
#include "program/forms/Strings.h"

namespace zorvane {

ChartPane::ChartPane(const TimingTable& table, const Growth& growth, QWidget* parent)
    : QWidget(parent),
      chart_(new TimingChart(table, growth, this)),
      pages_(new QTabBar(this)),
      unit_(new QComboBox(this)),
      test_(new QComboBox(this)),
      measure_(new QPushButton(QStringLiteral("&Measure"), this)) {
    setObjectName(QStringLiteral("ChartPane"));
    setAccessibleName(QStringLiteral("Chart"));
    pages_->setObjectName(QStringLiteral("tabChart"));
    pages_->setAccessibleName(QStringLiteral("Pages of the chart"));
    pages_->setExpanding(false);
    pages_->setDrawBase(false);
    pages_->addTab(QStringLiteral("&Tests"));
    pages_->setTabToolTip(0, QStringLiteral("The times in the table, test by test"));
    pages_->addTab(QStringLiteral("&Growth"));
    pages_->setTabToolTip(1, QStringLiteral("One test with 50 to 10,000 items"));
    unit_->setObjectName(QStringLiteral("cboUnit"));
    unit_->setAccessibleName(QStringLiteral("Unit of the chart"));
    unit_->addItems({QStringLiteral("Total time"), QStringLiteral("Time per operation")});
    unit_->setToolTip(QStringLiteral("What the chart shows: a whole test, or one operation of it"));
    test_->setObjectName(QStringLiteral("cboTest"));
    test_->setAccessibleName(QStringLiteral("Test whose growth is shown"));
    test_->setToolTip(QStringLiteral("The test whose growth is shown"));
    for (const TimingTest& test : kTimingTests) {
        test_->addItem(ToQString(TimingTable::Description(test.Row)));
    }
    measure_->setObjectName(QStringLiteral("cmdMeasure"));
    measure_->setToolTip(
        QStringLiteral("Times every test of all four containers with 50 to "
                       "10,000 items, within some seconds"));
    connect(pages_, &QTabBar::currentChanged, this, &ChartPane::ShowPage);
    connect(unit_, &QComboBox::currentIndexChanged, this,
            [this](int at) { chart_->SetUnit(at == 0 ? ChartUnit::Total : ChartUnit::Operation); });
    connect(test_, &QComboBox::currentIndexChanged, this,
            [this](int at) { chart_->SetGrowthTest(at + 1); });
    connect(measure_, &QPushButton::clicked, this, &ChartPane::MeasureRequested);

    auto* row = new QHBoxLayout;
    row->addWidget(pages_);
    row->addStretch();
    row->addWidget(test_);
    row->addWidget(measure_);
    row->addWidget(unit_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addLayout(row);
    layout->addWidget(chart_, 1);
    ShowPage(0);
}

QList<QWidget*> ChartPane::Controls() const {
    return {pages_, test_, measure_, unit_};
}

void ChartPane::ShowPage(int tab) {
    const bool growth = tab == 1;
    QToolTip::hideText();  // it would tell of a bar that is gone
    chart_->SetPage(growth ? TimingChart::Page::Growth : TimingChart::Page::Tests);
    test_->setVisible(growth);
    measure_->setVisible(growth);
}

}  // namespace zorvane
