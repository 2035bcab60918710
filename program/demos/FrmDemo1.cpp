#include "program/demos/FrmDemo1.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QStyleOptionHeader>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>

#include "program/demos/TimingChart.h"
#include "program/forms/FontRecord.h"
#include "program/forms/Label.h"
#include "program/forms/ListView.h"
#include "program/forms/SaveText.h"
#include "program/forms/Screen.h"
#include "program/forms/Strings.h"
#include "zorvane/platform/NumberText.h"

namespace zorvane {
namespace {

// The stated columns are narrower than the longest caption: it may break behind a low line.
class BreakingHeader : public QHeaderView {
  public:
    explicit BreakingHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
        setSectionsMovable(false);
        setHighlightSections(false);
    }

  protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        option->text.replace(QLatin1Char('_'), QStringLiteral("_\u200B"));
        option->textAlignment |= static_cast<Qt::Alignment>(Qt::TextWordWrap);
    }
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override {
        const QSize one = QHeaderView::sectionSizeFromContents(section);
        return {one.width(), one.height() + fontMetrics().lineSpacing()};
    }
};

// Rows with a little air, so that fourteen of them can be told apart.
class AiryRows : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 4);
    }
};

}  // namespace

FrmDemo1::FrmDemo1(TimingRun::Clocks clocks)
    : Form("FrmDemo1"),
      clocks_(std::move(clocks)),
      label1_(new Label(this)),
      text1_(new QLineEdit(this)),
      label2_(new Label(this)),
      lblStatus_(new Label(this)),
      list_(new ListView(this)),
      chart_(new TimingChart(table_, this)),
      copyBtn_(Button("CopyBtn", QStringLiteral("Cop&y Table"))),
      saveBtn_(Button("SaveBtn", QStringLiteral("&Save As CSV..."))),
      orderBtn_(Button("OrderBtn", QStringLiteral("&Order Zorvane"))),
      closeBtn_(Button("CloseBtn", QStringLiteral("&Close"))) {
    SetCaption(u"Zorvane - Class Code Generator Demonstration");
    label1_->setObjectName(QStringLiteral("Label1"));
    label1_->SetCaption(u"Number of Items In Collection:");
    label1_->setBuddy(text1_);
    label2_->setObjectName(QStringLiteral("Label2"));
    label2_->SetCaption(u"Min: 2000  .....  Max: 10000 Items");
    lblStatus_->setObjectName(QStringLiteral("lblStatus"));
    lblStatus_->setAccessibleName(QStringLiteral("Status"));
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setAccessibleName(QStringLiteral("Number of items in collection"));
    text1_->setMaxLength(12);
    list_->setObjectName(QStringLiteral("LV"));
    list_->setAccessibleName(QStringLiteral("Times of each container in seconds"));
    list_->setFont(CompactFont(8.25));
    list_->setHeader(new BreakingHeader(list_));
    list_->setItemDelegate(new AiryRows(list_));
    for (std::size_t i = 0; i < kContenders.size(); ++i) {
        const ContenderInfo& contender = kContenders.at(i);
        QPushButton* const button = Button(contender.Button, ToQString(contender.ButtonCaption));
        const QString digit = QString::number(i + 1);
        button->setShortcut(QKeySequence(QStringLiteral("Alt+") + digit));
        button->setToolTip(QStringLiteral("Times this container (Alt+%1)").arg(digit));
        contenders_.at(i) = button;
    }
    On(contenders_[0], &QPushButton::clicked, [this] { Command1_Click(); });
    On(contenders_[1], &QPushButton::clicked, [this] { Command2_Click(); });
    On(contenders_[2], &QPushButton::clicked, [this] { Command5_Click(); });
    On(contenders_[3], &QPushButton::clicked, [this] { Command3_Click(); });
    On(copyBtn_, &QPushButton::clicked, [this] { CopyBtn_Click(); });
    On(saveBtn_, &QPushButton::clicked, [this] { SaveBtn_Click(); });
    On(orderBtn_, &QPushButton::clicked, [this] { OrderBtn_Click(); });
    On(closeBtn_, &QPushButton::clicked, [this] { CloseBtn_Click(); });
    SetCancelButton(closeBtn_);
    LayOut();
}

QPushButton* FrmDemo1::Button(const char* name, const QString& caption) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    return button;
}

void FrmDemo1::LayOut() {
    label1_->setWordWrap(false);
    label2_->setWordWrap(false);
    lblStatus_->setWordWrap(false);
    auto* count = new QHBoxLayout;
    count->addWidget(label1_);
    text1_->setFixedWidth(ToPixels(1100));
    count->addWidget(text1_);
    count->addSpacing(12);
    count->addWidget(label2_);
    count->addSpacing(12);
    count->addWidget(lblStatus_);
    count->addStretch();

    auto* runs = new QVBoxLayout;
    for (QPushButton* button : contenders_) {
        button->setMinimumHeight(ToPixels(450));
        runs->addWidget(button);
    }
    runs->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(copyBtn_);
    buttons->addWidget(saveBtn_);
    buttons->addStretch();
    buttons->addWidget(orderBtn_);
    buttons->addWidget(closeBtn_);
    auto* box = new QWidget(this);
    auto* upper = new QHBoxLayout(box);
    upper->setContentsMargins(0, 0, 0, 0);
    upper->setSpacing(10);
    upper->addWidget(list_, 1000);
    upper->addLayout(runs, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(10);
    layout->addLayout(count);
    layout->addWidget(box, 1000);  // as high as the list may be, and the chart what is left
    layout->addWidget(chart_, 1);
    layout->addLayout(buttons);

    QWidget* previous = text1_;
    for (QWidget* next : std::initializer_list<QWidget*>{
             contenders_[0], contenders_[1], contenders_[2], contenders_[3], list_, copyBtn_,
             saveBtn_, orderBtn_, closeBtn_}) {
        setTabOrder(previous, next);
        previous = next;
    }
    resize(ToPixels(10800), ToPixels(10200));
    contenders_[0]->setFocus();
}

void FrmDemo1::Form_Load() {
    run_.emplace(BuildTestData(ProgramRandom()), clocks_);
    text1_->setText(ToQString(LongText(TestData::kItems / 5)));
    for (int column = 0; column < TimingTable::kColumns; ++column) {
        list_->AddColumn(ToQString(TimingTable::ColumnCaption(column)),
                         TimingTable::ColumnWidth(column),
                         column == 0 ? Qt::AlignLeft : Qt::AlignRight);
    }
    for (int row = 1; row <= TimingTable::kRows; ++row) {
        list_->AddRow({ToQString(TimingTable::Description(row))});
    }
    // All columns and rows without scrolling; on a small screen a third of the rows, two
    // containers.
    const int frame = 2 * list_->frameWidth();
    const int heading = list_->header()->sizeHint().height();
    const int row = list_->sizeHintForRow(0);
    const int all = list_->header()->length() + frame;
    list_->setMinimumWidth(all - 2 * list_->header()->sectionSize(TimingTable::kColumns - 1));
    list_->setMaximumWidth(all);
    list_->setMinimumHeight(heading + row * TimingTable::kRows / 3 + frame);
    list_->parentWidget()->setMaximumHeight(heading + row * TimingTable::kRows + frame);
    Refresh();
    Screen::The().SetMousePointer(Pointer::Default);
}

void FrmDemo1::RunContender(Contender contender) {
    const int column = static_cast<int>(contender);
    Screen::The().SetMousePointer(Pointer::Hourglass);
    ClearColumn(column);
    const ItemCount count = ReadItemCount(ToText(text1_->text()));
    lblStatus_->SetCaption(Text());
    if (count.Corrected) {
        const bool most = count.Items == TestData::kItems;
        lblStatus_->SetCaption((most ? u"Lowered to " : u"Raised to ") + *count.Corrected +
                               (most ? u", the most." : u", the least."));
        text1_->setText(ToQString(*count.Corrected));
    }
    run_->Run(contender, count.Items, [&](const TimingCell& cell) {
        table_.Set(column, count.Items, cell);
        AddToList(cell.Row, column, cell.Shown);
        Refresh();
    });
    Screen::The().SetMousePointer(Pointer::Default);
}

void FrmDemo1::AddToList(int row, int column, const Text& value) {
    list_->SetCell(row, column, ToQString(value));
    list_->SetCellToolTip(row, column, ToQString(table_.ToolTip(row, column)));
}

void FrmDemo1::ClearColumn(int column) {
    table_.ClearColumn(column);
    for (int row = 1; row <= TimingTable::kClearedRows; ++row) AddToList(row, column, {});
    Refresh();
}

// At once and without letting other input in: a run fills the table row by row.
void FrmDemo1::Refresh() {
    list_->viewport()->repaint();
    chart_->repaint();
}

void FrmDemo1::CloseBtn_Click() {
    Unload();
}

void FrmDemo1::CopyBtn_Click() {
    auto* both = new QMimeData;  // the clipboard takes it over
    both->setText(ToQString(table_.AsTabbed()));
    both->setHtml(ToQString(table_.AsHtml()));
    QGuiApplication::clipboard()->setMimeData(both);
}

void FrmDemo1::OrderBtn_Click() {
    Q_EMIT OrderRequested();
}

void FrmDemo1::SaveBtn_Click() {
    (void)SaveText(this,
                   {.Title = QStringLiteral("Save the Times"),
                    .Name = QStringLiteral("Zorvane times.csv"),
                    .Filter = QStringLiteral("Tables (*.csv);;All files (*)"),
                    .Failure = QStringLiteral("The times could not be saved.")},
                   ToQString(table_.AsCsv()));
}

}  // namespace zorvane
