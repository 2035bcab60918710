#include "program/demos/FrmDemo1.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QImageWriter>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "program/demos/ChartPane.h"
#include "program/demos/TimingChart.h"
#include "program/demos/TimingList.h"
#include "program/forms/Label.h"
#include "program/forms/SaveText.h"
#include "program/forms/Screen.h"
#include "program/forms/Strings.h"
#include "zorvane/platform/NumberText.h"

namespace zorvane {
namespace {

constexpr int kMargin = 12;
constexpr int kNarrow = 4;
constexpr int kSpacing = 8;

}  // namespace

FrmDemo1::FrmDemo1(TimingRun::Clocks clocks)
    : Form("FrmDemo1"),
      clocks_(std::move(clocks)),
      label1_(new Label(this)),
      text1_(new QLineEdit(this)),
      label2_(new Label(this)),
      lblStatus_(new Label(this)),
      list_(new TimingList(table_, this)),
      pane_(new ChartPane(table_, growth_, this)),
      runAllBtn_(Button("RunAllBtn", QStringLiteral("Run &All Four"),
                        QStringLiteral("Times the four containers one after the other (Alt+A)"),
                        &FrmDemo1::RunAllBtn_Click)),
      fineBox_(new QCheckBox(QStringLiteral("&Finer Times"), this)),
      copyBtn_(Button("CopyBtn", QStringLiteral("Cop&y Table"),
                      QStringLiteral("Copies all times, the finer ones among them"),
                      &FrmDemo1::CopyBtn_Click)),
      saveBtn_(Button("SaveBtn", QStringLiteral("&Save As CSV..."),
                      QStringLiteral("Saves all times for a spreadsheet"),
                      &FrmDemo1::SaveBtn_Click)),
      copyPictureBtn_(Button("CopyPictureBtn", QStringLiteral("Copy &Picture"),
                             QStringLiteral("Copies the chart as it is shown"),
                             &FrmDemo1::CopyPictureBtn_Click)),
      savePictureBtn_(Button("SavePictureBtn", QStringLiteral("Sa&ve Picture..."),
                             QStringLiteral("Saves the chart as it is shown, as PNG or SVG"),
                             &FrmDemo1::SavePictureBtn_Click)),
      orderBtn_(Button("OrderBtn", QStringLiteral("&Order Zorvane"),
                       QStringLiteral("Opens the order form"), &FrmDemo1::OrderBtn_Click)),
      closeBtn_(Button("CloseBtn", QStringLiteral("&Close"),
                       QStringLiteral("Closes this window (Esc)"), &FrmDemo1::CloseBtn_Click)) {
    SetCaption(u"Zorvane - Class Code Generator Demonstration");
    label1_->setObjectName(QStringLiteral("Label1"));
    label1_->SetCaption(u"Number of Items In Collection:");
    label1_->setText(QStringLiteral("&Number of Items In Collection:"));  // for the keyboard alone
    label1_->setBuddy(text1_);
    label2_->setObjectName(QStringLiteral("Label2"));
    label2_->SetCaption(u"Min: 2000  .....  Max: 10000 Items");
    lblStatus_->setObjectName(QStringLiteral("lblStatus"));
    lblStatus_->setAccessibleName(QStringLiteral("Status"));
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setAccessibleName(QStringLiteral("Number of items in collection"));
    text1_->setMaxLength(12);
    text1_->setToolTip(QStringLiteral("50 to 10,000 (Alt+N). Enter runs what was run last."));
    fineBox_->setObjectName(QStringLiteral("FineBox"));
    fineBox_->setToolTip(QStringLiteral("Fills the table with the times of a finer clock (Alt+F)"));
    constexpr std::array kClicks{&FrmDemo1::Command1_Click, &FrmDemo1::Command2_Click,
                                 &FrmDemo1::Command5_Click, &FrmDemo1::Command3_Click};
    for (std::size_t i = 0; i < kContenders.size(); ++i) {
        const ContenderInfo& contender = kContenders.at(i);
        const QString digit = QString::number(i + 1);
        contenders_.at(i) =
            Button(contender.Button, ToQString(contender.ButtonCaption),
                   QStringLiteral("Times this container (Alt+%1)").arg(digit), kClicks.at(i));
        contenders_.at(i)->setShortcut(QKeySequence(QStringLiteral("Alt+") + digit));
    }
    On(fineBox_, &QCheckBox::clicked, [this] { FineBox_Click(); });
    On(pane_, &ChartPane::MeasureRequested, [this] { MeasureBtn_Click(); });
    On(text1_, &QLineEdit::returnPressed, [this] { Text1_Enter(); });
    // What was said of a number does not hold for another one.
    On(text1_, &QLineEdit::textEdited, [this] { Say({}); });
    SetCancelButton(closeBtn_);
    LayOut();
}

QPushButton* FrmDemo1::Button(const char* name, const QString& caption, const QString& toolTip,
                              void (FrmDemo1::*click)()) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(toolTip);
    On(button, &QPushButton::clicked, [this, click] { (this->*click)(); });
    return button;
}

void FrmDemo1::LayOut() {
    label1_->setWordWrap(false);
    label2_->setWordWrap(false);
    // It says more than there is room for rather than making the window wider.
    lblStatus_->setWordWrap(false);
    lblStatus_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* count = new QHBoxLayout;
    count->addWidget(label1_);
    text1_->setFixedWidth(ToPixels(1100));
    count->addWidget(text1_);
    count->addSpacing(12);
    count->addWidget(label2_);
    count->addSpacing(12);
    count->addWidget(lblStatus_, 1);

    constexpr int kUsualWidth = 197;  // beside the stated columns in a window of the usual width
    auto* runs = new QVBoxLayout;
    runs->setSpacing(5);
    runs->addItem(new QSpacerItem(kUsualWidth, 0, QSizePolicy::Maximum, QSizePolicy::Fixed));
    for (QPushButton* button : contenders_) runs->addWidget(button);
    runs->addWidget(runAllBtn_);
    runs->addWidget(fineBox_, 0, Qt::AlignLeft);
    runs->addStretch();
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {copyBtn_, saveBtn_, copyPictureBtn_, savePictureBtn_}) {
        buttons->addWidget(button);
    }
    buttons->addStretch();
    buttons->addWidget(orderBtn_);
    buttons->addWidget(closeBtn_);
    auto* box = new QWidget(this);
    auto* upper = new QHBoxLayout(box);
    upper->setContentsMargins(0, 0, 0, 0);
    upper->setSpacing(10);
    upper->addWidget(list_, 1);
    upper->addLayout(runs);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addLayout(count);
    layout->addWidget(box, 3);  // up to what the list needs
    layout->addWidget(pane_, 2);
    layout->addLayout(buttons);

    QWidget* previous = text1_;
    QList<QWidget*> order(contenders_.begin(), contenders_.end());
    order << runAllBtn_ << fineBox_ << list_ << pane_->Controls() << copyBtn_ << saveBtn_
          << copyPictureBtn_ << savePictureBtn_ << orderBtn_ << closeBtn_;
    for (QWidget* next : order) {
        setTabOrder(previous, next);
        previous = next;
    }
    resize(ToPixels(10800), ToPixels(10200));
    contenders_[0]->setFocus();
}

void FrmDemo1::Form_Load() {
    run_.emplace(BuildTestData(ProgramRandom()), clocks_);
    text1_->setText(ToQString(LongText(TestData::kItems / 5)));
    QWidget* const box = list_->parentWidget();
    const QMargins borders = FramePlacement::UsualBorders();
    const int room = screen()->availableSize().width() - borders.left() - borders.right();
    const auto others = [box] {
        return box->layout()->spacing() + box->layout()->itemAt(1)->minimumSize().width();
    };
    int margin = kMargin;
    if (list_->StatedWidth(true) > room - 2 * margin - others()) {
        margin = kNarrow;  // on a small screen the last column needs the room more
        layout()->setContentsMargins(margin, kMargin, margin, kMargin);
        box->layout()->setSpacing(kNarrow);
    }
    list_->Fill(room - 2 * margin - others());
    box->setMinimumWidth(list_->LeastWidth() + others());
    box->setMaximumHeight(list_->FullHeight());
    Refresh();
    Screen::The().SetMousePointer(Pointer::Default);
}

void FrmDemo1::RunContenders(const std::vector<Contender>& contenders) {
    lastRun_ = contenders;
    Say({});
    for (const Contender contender : contenders) RunContender(contender);
}

void FrmDemo1::RunContender(Contender contender) {
    const int column = static_cast<int>(contender);
    Screen::The().SetMousePointer(Pointer::Hourglass);
    ClearColumn(column);
    const std::int32_t items = ReadCount();
    run_->Run(contender, items, [&](const TimingCell& cell) {
        table_.Set(column, items, cell);
        AddToList(cell.Row, column);
        Refresh();
    });
    Screen::The().SetMousePointer(Pointer::Default);
}

// Corrects what is out of bounds, and says so.
std::int32_t FrmDemo1::ReadCount() {
    const ItemCount count = ReadItemCount(ToText(text1_->text()));
    if (count.Corrected) {
        const bool most = count.Items == TestData::kItems;
        if (!count.Number) {
            Say(u"No number: " + *count.Corrected + u", the least.");
        } else {
            Say((most ? u"Lowered to " : u"Raised to ") + *count.Corrected +
                (most ? u", the most." : u", the least."));
        }
        text1_->setText(ToQString(*count.Corrected));
    }
    return count.Items;
}

void FrmDemo1::AddToList(int row, int column) {
    list_->ShowCell(row, column, fineBox_->isChecked());
}

void FrmDemo1::ClearColumn(int column) {
    table_.ClearColumn(column);
    for (int row = 1; row <= TimingTable::kClearedRows; ++row) AddToList(row, column);
    Refresh();
}

// At once and without letting other input in: a run fills the table row by row.
void FrmDemo1::Refresh() {
    list_->viewport()->repaint();
    pane_->Chart().repaint();
}

void FrmDemo1::CloseBtn_Click() {
    Unload();
}

void FrmDemo1::CopyBtn_Click() {
    auto* both = new QMimeData;  // the clipboard takes it over
    both->setText(ToQString(table_.AsTabbed()));
    both->setHtml(ToQString(table_.AsHtml()));
    QGuiApplication::clipboard()->setMimeData(both);
    Say(u"The table is copied.");
}

void FrmDemo1::CopyPictureBtn_Click() {
    QGuiApplication::clipboard()->setImage(pane_->Chart().Picture());
    Say(u"The chart is copied.");
}

void FrmDemo1::FineBox_Click() {
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        for (int row = 1; row <= TimingTable::kClearedRows; ++row) AddToList(row, column);
    }
}

void FrmDemo1::MeasureBtn_Click() {
    Screen::The().SetMousePointer(Pointer::Hourglass);
    Say({});
    growth_.Measure(*run_, [this] { pane_->Chart().repaint(); });
    Screen::The().SetMousePointer(Pointer::Default);
}

void FrmDemo1::OrderBtn_Click() {
    Q_EMIT OrderRequested();
}

void FrmDemo1::RunAllBtn_Click() {
    std::vector<Contender> all;
    for (const ContenderInfo& contender : kContenders) all.push_back(contender.Is);
    RunContenders(all);
}

void FrmDemo1::SaveBtn_Click() {
    SaySavedAs(SaveText(this,
                        {.Title = QStringLiteral("Save the Times"),
                         .Name = QStringLiteral("Zorvane times.csv"),
                         .Filter = QStringLiteral("Tables (*.csv);;All files (*)"),
                         .Failure = QStringLiteral("The times could not be saved.")},
                        ToQString(table_.AsCsv())));
}

void FrmDemo1::SavePictureBtn_Click() {
    SaySavedAs(
        SaveFile(this,
                 {.Title = QStringLiteral("Save the Chart"),
                  .Name = QStringLiteral("Zorvane chart.png"),
                  .Filter = QStringLiteral("Pictures (*.png);;Drawings (*.svg);;All files (*)"),
                  .Failure = QStringLiteral("The chart could not be saved.")},
                 [this](QIODevice& device, const QString& path) {
                     const QByteArray kind = QFileInfo(path).suffix().toLower().toLatin1();
                     if (kind == "svg") return pane_->Chart().WriteDrawing(device);
                     const bool known = QImageWriter::supportedImageFormats().contains(kind);
                     pane_->Chart().Picture().save(&device, known ? kind.constData() : "PNG");
                 }));
}

// As much of it as there is room for beside the number.
void FrmDemo1::Say(const Text& what, const QString& toolTip) {
    lblStatus_->SetCaption(what);
    lblStatus_->setText(
        fontMetrics().elidedText(lblStatus_->text(), Qt::ElideMiddle, lblStatus_->width()));
    lblStatus_->setToolTip(toolTip);
}

void FrmDemo1::SaySavedAs(const std::optional<QString>& path) {
    if (!path) return;
    Say(u"Saved as " + ToText(QFileInfo(*path).fileName()) + u".", QDir::toNativeSeparators(*path));
}

void FrmDemo1::Text1_Enter() {
    if (lastRun_.empty()) {
        RunAllBtn_Click();
    } else {
        RunContenders(std::vector<Contender>(lastRun_));
    }
}

}  // namespace zorvane
