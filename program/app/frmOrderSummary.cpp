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
    const auto add = [&](const char* name, const QString& caption, const char* tip, auto handler) {
        auto* button = new QPushButton(caption, this);
        button->setToolTip(QLatin1String(tip));
        button->setObjectName(QLatin1String(name));
        On(button, &QPushButton::clicked, [this, handler] { (this->*handler)(); });
        buttons->addWidget(button);
        setTabOrder(previous, button);
        previous = button;
        return button;
    };
    auto* copy = add("CopyBtn", QStringLiteral("&Copy"), "Copy the order to the clipboard",
                     &frmOrderSummary::CopyBtn_Click);
    add("PrintBtn", QStringLiteral("&Print..."), "Print the order",
        &frmOrderSummary::PrintBtn_Click);
    add("SaveBtn", QStringLiteral("&Save As..."), "Save the order as a text",
        &frmOrderSummary::SaveBtn_Click);
    buttons->addStretch();
    auto* back = add("BackBtn", QStringLiteral("&Back"), "Correct the answers",
                     &frmOrderSummary::BackBtn_Click);
    add("CloseBtn", QStringLiteral("C&lose"), "End the order", &frmOrderSummary::CloseBtn_Click);
    SetCancelButton(back);
    SetDefaultButton(copy);  // Enter, pressed once too often, loses nothing

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
    Keep(u"The order has been copied to the clipboard.");
}

void frmOrderSummary::PrintBtn_Click() {
    if (Dialogs::Current().Print(this, windowTitle(), SummaryText())) {
        Keep(u"The order has been sent to the printer.");
    }
}

void frmOrderSummary::SaveBtn_Click() {
    const auto path = SaveText(this,
                               {.Title = QStringLiteral("Save the Order"),
                                .Name = QStringLiteral("Zorvane order.txt"),
                                .Filter = QStringLiteral("Text files (*.txt);;All files (*)"),
                                .Failure = QStringLiteral("The order could not be saved.")},
                               SummaryText());
    if (path) Keep(Text(u"Saved as ") + ToText(QDir::toNativeSeparators(*path)));
}

bool frmOrderSummary::Form_QueryUnload() {
    return kept_ || !finished_ ||
           Dialogs::Current().Agree(
               this, windowTitle(),
               QStringLiteral("Close it? The order has been neither copied nor printed nor saved."),
               QStringLiteral("C&lose"), QStringLiteral("&Stay"));
}

void frmOrderSummary::Keep(const Text& status) {
    kept_ = true;
    status_->SetCaption(status);
}

QString frmOrderSummary::SummaryText() const {
    return text_->toPlainText();
}

}  // namespace zorvane
