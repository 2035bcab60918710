#include "program/demos/frmDemo0.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "program/forms/Label.h"
#include "program/forms/ListView.h"
#include "program/forms/SaveText.h"
#include "program/forms/Screen.h"
#include "program/forms/Strings.h"
#include "zorvane/platform/NumberText.h"

namespace zorvane {
namespace {

// How the last such window of this run was left.
QSize& LastSize() {
    static QSize size(ToPixels(10200), ToPixels(8100));
    return size;
}

std::vector<int>& LastWidths() {
    static std::vector<int> widths;
    return widths;
}

}  // namespace

frmDemo0::frmDemo0()
    : Form("frmDemo0"),
      description_(new Label(this)),
      txtFind_(new QLineEdit(this)),
      shown_(new Label(this)),
      list_(new ListView(this)),
      saveBtn_(new QPushButton(QStringLiteral("Save &As..."), this)),
      orderBtn_(new QPushButton(QStringLiteral("&Order"), this)),
      closeBtn_(new QPushButton(QStringLiteral("&Close"), this)) {
    constexpr std::array kCaptions{"By &Key", "By &Item", "By &String Item", "By &Long Item"};
    SetCaption(u"Zorvane - Class Code Generator Demonstration");
    description_->setObjectName(QStringLiteral("Label1"));
    list_->setObjectName(QStringLiteral("LV"));
    list_->setAccessibleName(QStringLiteral("Records of the key list"));
    for (std::size_t index = 0; index < command1_.size(); ++index) {
        auto* button = new QPushButton(QLatin1String(kCaptions.at(index)), this);
        button->setObjectName(QStringLiteral("Command1"));
        button->setProperty("Index", static_cast<int>(index));
        On(button, &QPushButton::clicked,
           [this, index] { Command1_Click(static_cast<std::int16_t>(index)); });
        button->setToolTip(QStringLiteral("Re-sort the key list; its heading does so too"));
        command1_.at(index) = button;
    }
    txtFind_->setObjectName(QStringLiteral("txtFind"));
    txtFind_->setAccessibleName(QStringLiteral("Find"));
    txtFind_->setToolTip(QStringLiteral("Show only rows that hold this (Ctrl+F; Esc shows all)"));
    txtFind_->setClearButtonEnabled(true);
    txtFind_->setMinimumWidth(ToPixels(1500));
    On(txtFind_, &QLineEdit::textChanged, [this] { txtFind_Change(); });
    auto* find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    On(find, &QAction::triggered, [this] {
        txtFind_->setFocus(Qt::ShortcutFocusReason);
        txtFind_->selectAll();
    });
    addAction(find);
    shown_->setObjectName(QStringLiteral("lblShown"));
    shown_->setWordWrap(false);
    const Text most = LongText(KeyListDemo::kRecords);
    shown_->SetCaption(most + Text(u" of ") + most + Text(u" records"));
    shown_->setMinimumWidth(shown_->sizeHint().width());  // a shorter count moves nothing
    saveBtn_->setObjectName(QStringLiteral("SaveBtn"));
    saveBtn_->setToolTip(QStringLiteral("Save the rows shown, in the order shown"));
    On(saveBtn_, &QPushButton::clicked, [this] { SaveBtn_Click(); });
    orderBtn_->setToolTip(QStringLiteral("Fill in an order form; nothing is sent by itself"));
    orderBtn_->setObjectName(QStringLiteral("OrderBtn"));
    closeBtn_->setObjectName(QStringLiteral("CloseBtn"));
    On(orderBtn_, &QPushButton::clicked, [this] { OrderBtn_Click(); });
    On(closeBtn_, &QPushButton::clicked, [this] { CloseBtn_Click(); });
    // A heading does what its button does, and the other way round when it is clicked again.
    On(list_, &ListView::ColumnClick, [this](int column) {
        const bool again = list_->SortColumn() == column && !list_->SortDescending();
        ReSort(KeyListDemo::ButtonOfColumn(column), again);
    });
    SetCancelButton(closeBtn_);
    LayOut();
}

void frmDemo0::LayOut() {
    resize(LastSize());
    setMinimumSize(ToPixels(9150), ToPixels(5400));
    auto* findLabel = new QLabel(QStringLiteral("&Find:"), this);
    findLabel->setBuddy(txtFind_);
    auto* above = new QHBoxLayout;
    above->addWidget(findLabel);
    above->addWidget(txtFind_, 1);
    above->addSpacing(16);
    above->addWidget(shown_);
    above->addSpacing(16);
    above->addWidget(saveBtn_);
    auto* buttons = new QHBoxLayout;
    constexpr int kAir = 12;  // the style leaves long captions none
    for (QPushButton* button : command1_) {
        button->setMinimumWidth(button->sizeHint().width() + kAir);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    buttons->addSpacing(16);
    buttons->addWidget(orderBtn_);
    buttons->addWidget(closeBtn_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(10);
    layout->addWidget(description_);
    layout->addLayout(above);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);

    QWidget* previous = txtFind_;
    for (QWidget* next :
         std::initializer_list<QWidget*>{saveBtn_, list_, command1_[0], command1_[1], command1_[2],
                                         command1_[3], orderBtn_, closeBtn_}) {
        setTabOrder(previous, next);
        previous = next;
    }
    list_->setFocus();
}

void frmDemo0::Form_Load() {
    constexpr std::array kWidths{1100.0F, 2000.0F, 2400.0F, 2000.0F, 1700.0F};
    description_->SetCaption(KeyListDemo::Description());
    Demo().Fill(ProgramRandom());
    for (int column = 0; column < KeyListDemo::kColumns; ++column) {
        const bool number = column == KeyListDemo::kColumns - 1;
        list_->AddColumn(ToQString(KeyListDemo::ColumnCaption(column)),
                         kWidths.at(static_cast<std::size_t>(column)),
                         number ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeft);
    }
    list_->header()->setSectionResizeMode(2, QHeaderView::Stretch);  // whatever room there is
    list_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);        // few rows move no column
    for (int column = 0; column < static_cast<int>(LastWidths().size()); ++column) {
        list_->header()->resizeSection(column, LastWidths().at(static_cast<std::size_t>(column)));
    }
    ShowList();
    list_->SetSortColumn(KeyListDemo::ColumnOfButton(0));
    list_->SetSearchColumn(KeyListDemo::ColumnOfButton(0));
}

void frmDemo0::Form_Unload() {
    LastSize() = isMaximized() ? normalGeometry().size() : size();
    LastWidths().clear();
    for (int column = 0; column < KeyListDemo::kColumns; ++column) {
        LastWidths().push_back(list_->header()->sectionSize(column));
    }
}

void frmDemo0::CloseBtn_Click() {
    Unload();
}

void frmDemo0::OrderBtn_Click() {
    Q_EMIT OrderRequested();
}

KeyListDemo& frmDemo0::Demo() {
    if (!demo_) demo_.emplace();
    return *demo_;
}

void frmDemo0::ReSort(int button, bool descending) {
    Screen::The().SetMousePointer(Pointer::Hourglass);
    Demo().ReSort(button, descending);
    ShowList();
    const int column = KeyListDemo::ColumnOfButton(button);
    list_->SetSortColumn(column, descending);
    list_->SetSearchColumn(column);
    Screen::The().SetMousePointer(Pointer::Default);
}

void frmDemo0::SaveBtn_Click() {
    // No cell holds a comma, a quotation mark or a line break.
    const QString rows = list_->AsText(ListView::Rows::All, true)
                             .replace(QLatin1Char('\t'), QLatin1Char(','))
                             .replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    const auto path =
        SaveText(this,
                 {.Title = QStringLiteral("Save the Records"),
                  .Name = QStringLiteral("Zorvane records.csv"),
                  .Filter = QStringLiteral("Comma-separated values (*.csv);;All files (*)"),
                  .Failure = QStringLiteral("The records could not be saved.")},
                 rows);
    if (path) ShowSaved(*path);
}

void frmDemo0::txtFind_Change() {
    ShowList();
}

// Escape in a search leaves the search first, and the window next; Down goes to what it has found.
void frmDemo0::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && txtFind_->hasFocus()) return list_->setFocus();
    if (event->key() != Qt::Key_Escape || txtFind_->text().isEmpty()) {
        return Form::keyPressEvent(event);
    }
    txtFind_->clear();
    list_->setFocus();
}

void frmDemo0::ShowCount(const Text& more) {
    Text count = LongText(list_->RowCount());
    if (!txtFind_->text().isEmpty()) count = count + Text(u" of ") + LongText(Demo().Count());
    shown_->SetCaption(count + Text(u" records") + more);
    shown_->setToolTip(QString());
}

// As much of the name as leaves room to search.
void frmDemo0::ShowSaved(const QString& path) {
    ShowCount(Text(u", saved as ") + ToText(QFileInfo(path).fileName()));
    constexpr int kAir = 60;
    const int room = (txtFind_->geometry() | saveBtn_->geometry()).width() - saveBtn_->width() -
                     txtFind_->minimumWidth() - kAir;
    shown_->setText(shown_->fontMetrics().elidedText(shown_->text(), Qt::ElideMiddle, room));
    shown_->setToolTip(QDir::toNativeSeparators(path));
}

void frmDemo0::ShowList() {
    const QString wanted = txtFind_->text();
    std::vector<QStringList> rows;
    rows.reserve(static_cast<std::size_t>(Demo().Count()));
    for (std::int32_t position = 1; position <= Demo().Count(); ++position) {
        QStringList cells;
        bool found = wanted.isEmpty();
        for (const Text& cell : Demo().RowAt(position)) {
            found = found ||
                    (!cells.isEmpty() && ToQString(cell).contains(wanted, Qt::CaseInsensitive));
            cells << ToQString(cell);
        }
        if (found) rows.push_back(std::move(cells));
    }
    constexpr int kKey = 1;  // the column by which a record is known again
    list_->SetRows(std::move(rows), kKey);
    ShowCount();
}

}  // namespace zorvane
