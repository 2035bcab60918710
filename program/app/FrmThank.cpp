#include "program/app/FrmThank.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>

#include "program/app/Logo.h"
#include "program/app/frmOrder.h"
#include "program/forms/FontRecord.h"
#include "program/forms/Label.h"

namespace zorvane {

FrmThank::FrmThank() : Form("FrmThank") {
    SetCaption(u"Zorvane - Thank You");

    auto* logo = new LogoBox(this);
    logo->setObjectName(QStringLiteral("picLogo"));
    logo->setFixedSize(72, 72);
    auto* heading = new Label(this);
    heading->setObjectName(QStringLiteral("Label1"));
    QFont large = CompactFont(15);
    large.setBold(true);
    heading->setFont(large);
    heading->SetCaption(u"Thank you for trying Zorvane.");
    auto* text = new Label(this);
    text->setObjectName(QStringLiteral("Label2"));
    text->SetCaption(
        u"We hope that the key list, the timings and the property bag have shown what generated "
        u"code can do for your own programs.\r\n\r\nIf you would like to have Zorvane, the order "
        u"form takes a minute to fill in.");

    auto* order = new QPushButton(QStringLiteral("&Order Zorvane"), this);
    order->setObjectName(QStringLiteral("OrderBtn"));
    order->setToolTip(QStringLiteral("Fill in an order form; nothing is sent by itself"));
    On(order, &QPushButton::clicked, [this] { OrderBtn_Click(); });
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("CloseBtn"));
    close->setToolTip(QStringLiteral("End the program"));
    On(close, &QPushButton::clicked, [this] { CloseBtn_Click(); });
    SetDefaultButton(close);
    SetCancelButton(close);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->addStretch();
    buttons->addWidget(order);
    buttons->addWidget(close);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(20, 20, 20, 16);
    layout->setHorizontalSpacing(20);
    layout->setVerticalSpacing(10);
    layout->addWidget(logo, 0, 0, 2, 1, Qt::AlignTop);
    layout->addWidget(heading, 0, 1);
    layout->addWidget(text, 1, 1, Qt::AlignTop);
    layout->addLayout(buttons, 2, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(1, 1);
    setTabOrder(order, close);
    resize(ToPixels(7200), ToPixels(3450));
    setMinimumSize(ToPixels(6600), ToPixels(3450));
    close->setFocus();
}

void FrmThank::CloseBtn_Click() {
    Unload();
}

void FrmThank::OrderBtn_Click() {
    MakeObject<frmOrder>()->ShowModal(this);
}

}  // namespace zorvane
