#include "program/demos/frmDemo0.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include "program/forms/Label.h"
#include "program/forms/ListView.h"
#include "program/forms/Screen.h"
#include "program/forms/Strings.h"

namespace zorvane {

frmDemo0::frmDemo0()
    : Form("frmDemo0"),
      description_(new Label(this)),
      list_(new ListView(this)),
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
        command1_.at(index) = button;
    }
    orderBtn_->setObjectName(QStringLiteral("OrderBtn"));
    closeBtn_->setObjectName(QStringLiteral("CloseBtn"));
    On(orderBtn_, &QPushButton::clicked, [this] { OrderBtn_Click(); });
    On(closeBtn_, &QPushButton::clicked, [this] { CloseBtn_Click(); });
    // A heading does what its button does, and the other way round when it is clicked again.
    On(list_, &ListView::ColumnClick, [this](int column) {
        const int button = KeyListDemo::ButtonOfColumn(column);
        const bool again = list_->SortColumn() == column && !list_->SortDescending();
        if (button >= 0) ReSort(button, again);
    });
    SetCancelButton(closeBtn_);
    LayOut();
}

void frmDemo0::LayOut() {
    resize(ToPixels(10200), ToPixels(8100));
    setMinimumSize(ToPixels(9150), ToPixels(5400));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : command1_) buttons->addWidget(button);
    buttons->addStretch();
    buttons->addSpacing(16);
    buttons->addWidget(orderBtn_);
    buttons->addWidget(closeBtn_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(10);
    layout->addWidget(description_);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);

    QWidget* previous = list_;
    for (QPushButton* button :
         {command1_[0], command1_[1], command1_[2], command1_[3], orderBtn_, closeBtn_}) {
        setTabOrder(previous, button);
        previous = button;
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
                         number ? Qt::AlignRight : Qt::AlignLeft);
    }
    list_->header()->setSectionResizeMode(2, QHeaderView::Stretch);  // whatever room there is
    ShowList();
    list_->SetSortColumn(KeyListDemo::ColumnOfButton(0));
    list_->SetSearchColumn(KeyListDemo::ColumnOfButton(0));
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

void frmDemo0::ShowList() {
    std::vector<QStringList> rows;
    rows.reserve(static_cast<std::size_t>(Demo().Count()));
    for (std::int32_t position = 1; position <= Demo().Count(); ++position) {
        QStringList cells;
        for (const Text& cell : Demo().RowAt(position)) cells << ToQString(cell);
        rows.push_back(std::move(cells));
    }
    list_->SetRows(std::move(rows));
}

}  // namespace zorvane
