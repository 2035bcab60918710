#include "program/app/frmOrderSummary.h"

#include <QClipboard>
#include <QDate>
#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "program/app/Version.h"
#include "program/forms/Dialogs.h"
#include "program/forms/Label.h"
#include "program/forms/SaveText.h"
#include "program/forms/Strings.h"

namespace zorvane {
frmOrderSummary::frmOrderSummary(const Order& order)
    : Form("frmOrderSummary"), text_(new QPlainTextEdit(this)), status_(new Label(this)) {
    SetCaption(u"Order Summary");

    auto* label = new Label(this);
    label->setObjectName(QStringLiteral("Label1"));
    label->SetCaption(u"Your &order, ready to be sent to your supplier:");
    label->setBuddy(text_);
    text_->setObjectName(QStringLiteral("txtSummary"));
    text_->setAccessibleName(QStringLiteral("Order summary"));
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setTabChangesFocus(true);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const Text day = ToText(QDate::currentDate().toString(Qt::ISODate));
    text_->setPlainText(ToQString(order.Summary(ProgramVersion(), day)));
    status_->setObjectName(QStringLiteral("lblStatus"));
    status_->setAccessibleName(QStringLiteral("Status"));

    auto* buttons = new QHBoxLayout;
    QWidget* previous = text_;
    const auto add = [&](const char* name, const QString& caption, auto handler) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QLatin1String(name));
        On(button, &QPushButton::clicked, [this, handler] { (this->*handler)(); });
        buttons->addWidget(button);
        setTabOrder(previous, button);
        previous = button;
        return button;
    };
    add("CopyBtn", QStringLiteral("&Copy"), &frmOrderSummary::CopyBtn_Click);
    add("PrintBtn", QStringLiteral("&Print..."), &frmOrderSummary::PrintBtn_Click);
    add("SaveBtn", QStringLiteral("&Save As..."), &frmOrderSummary::SaveBtn_Click);
    buttons->addStretch();
    auto* back = add("BackBtn", QStringLiteral("&Back"), &frmOrderSummary::BackBtn_Click);
    auto* close = add("CloseBtn", QStringLiteral("C&lose"), &frmOrderSummary::CloseBtn_Click);
    SetCancelButton(back);
    SetDefaultButton(close);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addWidget(label);
    layout->addWidget(text_, 1);
    layout->addWidget(status_);
    layout->addLayout(buttons);
    resize(ToPixels(8100), ToPixels(5700));
    setMinimumSize(ToPixels(7200), ToPixels(4200));
    text_->setFocus();
}

void frmOrderSummary::BackBtn_Click() {
    finished_ = false;
    Unload();
}

void frmOrderSummary::CloseBtn_Click() {
    Unload();
}

void frmOrderSummary::CopyBtn_Click() {
    QGuiApplication::clipboard()->setText(SummaryText());
    status_->SetCaption(u"The order has been copied to the clipboard.");
}

void frmOrderSummary::PrintBtn_Click() {
    if (Dialogs::Current().Print(this, windowTitle(), SummaryText())) {
        status_->SetCaption(u"The order has been sent to the printer.");
    }
}

void frmOrderSummary::SaveBtn_Click() {
    const auto path = SaveText(this,
                               {.Title = QStringLiteral("Save the Order"),
                                .Name = QStringLiteral("Zorvane order.txt"),
                                .Filter = QStringLiteral("Text files (*.txt);;All files (*)"),
                                .Failure = QStringLiteral("The order could not be saved.")},
                               SummaryText());
    if (path) status_->SetCaption(Text(u"Saved as ") + ToText(QDir::toNativeSeparators(*path)));
}

QString frmOrderSummary::SummaryText() const {
    return text_->toPlainText();
}

}  // namespace zorvane
