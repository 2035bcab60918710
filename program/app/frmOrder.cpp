#include "program/app/frmOrder.h"

#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include "program/app/Logo.h"
#include "program/app/frmOrderSummary.h"
#include "program/forms/Dialogs.h"
#include "program/forms/FontRecord.h"
#include "program/forms/Label.h"
#include "program/forms/Strings.h"

namespace zorvane {
namespace {

Qt::InputMethodHints HintsFor(OrderField::Kind kind) {
    switch (kind) {
        case OrderField::Kind::Phone:
            return Qt::ImhDialableCharactersOnly;
        case OrderField::Kind::Mail:
            return Qt::ImhEmailCharactersOnly | Qt::ImhNoAutoUppercase;
        case OrderField::Kind::Number:
            return Qt::ImhDigitsOnly;
        case OrderField::Kind::Words:
            break;
    }
    return Qt::ImhNone;
}

}  // namespace

frmOrder::frmOrder() : Form("frmOrder") {
    SetCaption(u"Order Zorvane");

    auto* heading = new Label(this);
    heading->setObjectName(QStringLiteral("Label1"));
    QFont large = CompactFont(13);
    large.setBold(true);
    heading->setFont(large);
    heading->SetCaption(u"Order Zorvane");
    auto* text = new Label(this);
    text->setObjectName(QStringLiteral("Label2"));
    text->SetCaption(
        u"Please fill in every box. You will then see a summary that you can copy, print or save "
        u"and send to your supplier; nothing leaves this computer by itself.");

    auto* form = new QFormLayout;
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(8);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    for (std::size_t at = 0; at < boxes_.size(); ++at) {
        const OrderField& field = Order::kFields[at];
        auto* box = new QLineEdit(this);
        box->setObjectName(QLatin1String(field.Control));
        box->setAccessibleName(ToQString(field.Name));
        box->setPlaceholderText(ToQString(field.Hint));
        box->setInputMethodHints(HintsFor(field.Is));
        auto* remark = new Label(this);
        remark->setObjectName(box->objectName() + QStringLiteral("Remark"));
        remark->setWordWrap(false);
        remark->hide();
        On(box, &QLineEdit::editingFinished, [this, at] { ShowRemark(at); });
        // What is being corrected is looked at as it is typed; what is being entered, at its end.
        On(box, &QLineEdit::textEdited, [this, at] {
            if (!remarks_[at]->isHidden()) ShowRemark(at);
        });
        auto* both = new QHBoxLayout;
        both->setSpacing(8);
        both->addWidget(box, 1);
        both->addWidget(remark);
        auto* label = new QLabel(ToQString(field.Caption), this);
        label->setBuddy(box);
        form->addRow(label, both);
        remarks_[at] = remark;
        if (at > 0) setTabOrder(boxes_[at - 1], box);
        boxes_[at] = box;
    }

    auto* ok = new QPushButton(QStringLiteral("&OK"), this);
    ok->setObjectName(QStringLiteral("OkBtn"));
    ok->setToolTip(QStringLiteral("See the order as it can be sent"));
    On(ok, &QPushButton::clicked, [this] { OkBtn_Click(); });
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("CancelBtn"));
    cancel->setToolTip(QStringLiteral("Leave without an order"));
    On(cancel, &QPushButton::clicked, [this] { CancelBtn_Click(); });
    SetDefaultButton(ok);
    SetCancelButton(cancel);
    setTabOrder(boxes_.back(), ok);
    setTabOrder(ok, cancel);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 18, 20, 16);
    layout->setSpacing(10);
    layout->addWidget(heading);
    layout->addWidget(text);
    layout->addSpacing(4);
    layout->addLayout(form);
    layout->addStretch();
    layout->addLayout(buttons);
    resize(ToPixels(7200), ToPixels(6000));
    setMinimumSize(ToPixels(6000), ToPixels(5850));
    ShowHints();
    boxes_.front()->setFocus();
}

void frmOrder::changeEvent(QEvent* event) {
    Form::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ShowHints();
}

// Some dark palettes leave the hints black.
void frmOrder::ShowHints() {
    constexpr int kFaint = 160;  // of 255
    for (QLineEdit* box : boxes_) {
        if (!box) continue;
        QPalette colours = box->palette();
        QColor hint = palette().color(QPalette::Text);
        hint.setAlpha(kFaint);
        colours.setColor(QPalette::PlaceholderText, hint);
        box->setPalette(colours);
    }
}

void frmOrder::CancelBtn_Click() {
    Unload();
}

void frmOrder::OkBtn_Click() {
    const Order order = Entered();
    if (const auto empty = order.FirstEmpty()) {
        Dialogs::Current().Message(this, windowTitle(), ToQString(kIncompleteOrder),
                                   Dialogs::Kind::Warning);
        remarks_.at(*empty)->SetCaption(u"Still empty");
        remarks_.at(*empty)->show();
        boxes_.at(*empty)->setFocus();
        return;
    }
    const Ref<frmOrderSummary> summary = MakeObject<frmOrderSummary>(order);
    summary->ShowModal(this);
    ordered_ = summary->Finished();
    if (ordered_) Unload();
}

bool frmOrder::Form_QueryUnload() {
    return ordered_ || Entered().Blank() ||
           Dialogs::Current().Agree(
               this, windowTitle(),
               QStringLiteral("Leave the form? What has been entered is lost."),
               QStringLiteral("&Leave"), QStringLiteral("&Stay"));
}

void frmOrder::ShowRemark(std::size_t at) {
    const Text remark = Entered().Remark(at);
    remarks_[at]->SetCaption(remark);
    remarks_[at]->setVisible(!remark.Empty());
    boxes_[at]->setAccessibleDescription(ToQString(remark));
}

Order frmOrder::Entered() const {
    static const QRegularExpression breaks(QStringLiteral("\\R+"));
    Order order;
    for (std::size_t at = 0; at < boxes_.size(); ++at) {
        // A line that was pasted whole brings its end along, and an answer has one line.
        order.Answers[at] = ToText(boxes_[at]->text().replace(breaks, QStringLiteral(" ")));
    }
    return order;
}

}  // namespace zorvane
