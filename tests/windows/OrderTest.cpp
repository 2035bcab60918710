#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include "app/Order.h"
#include "app/frmOrder.h"
#include "app/frmOrderSummary.h"
#include "forms/Strings.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class frmOrderTest : public WindowTest {};

Order Complete() {
    Order order;
    for (std::size_t at = 0; at < order.Answers.size(); ++at) {
        order.Answers[at] = Text(u"answer ") + Text(Order::kFields[at].Name);
    }
    return order;
}

void FillIn(frmOrder& window, std::size_t leaveEmpty = Order::kFields.size()) {
    for (std::size_t at = 0; at < Order::kFields.size(); ++at) {
        auto* box = Control<QLineEdit>(&window, Order::kFields[at].Control);
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        if (at != leaveEmpty) QTest::keyClicks(box, QString("value %1").arg(at));
    }
}

TEST(OrderTest, FirstEmptyIsTheFirstOfSeveralAndBlanksAreNoGap) {
    EXPECT_EQ(Complete().FirstEmpty(), std::nullopt);
    EXPECT_EQ(Order().FirstEmpty(), 0U);
    for (std::size_t at = 0; at < Order::kFields.size(); ++at) {
        Order order = Complete();
        order.Answers[at] = Text();
        order.Answers.back() = at + 1 == order.Answers.size() ? Text() : order.Answers.back();
        EXPECT_EQ(order.FirstEmpty(), at);
        order.Answers[at] = u"   ";
        EXPECT_EQ(order.FirstEmpty(), std::nullopt) << "Kept: blanks count as filled";
    }
}

TEST(OrderTest, SummaryHoldsEveryAnswerBehindItsNameInOneColumn) {
    const QString summary = ToQString(Complete().Summary(u"1.2.3", u"2026-03-01"));
    EXPECT_TRUE(summary.contains(
        QRegularExpression("^Version: +1\\.2\\.3$", QRegularExpression::MultilineOption)));
    EXPECT_TRUE(summary.contains("2026-03-01"));
    qsizetype column = -1;
    for (const OrderField& field : Order::kFields) {
        const QString line = summary.section('\n', 5 + (&field - Order::kFields.data()),
                                             5 + (&field - Order::kFields.data()));
        EXPECT_TRUE(line.startsWith(ToQString(field.Name) + ":")) << line.toStdString();
        if (column < 0) column = line.indexOf("answer");
        EXPECT_EQ(line.indexOf("answer"), column) << line.toStdString();
    }
}

TEST_F(frmOrderTest, RefusesWhileABoxIsEmptyAndPutsTheCursorThere) {
    SpokenDialogs dialogs;
    const auto order = MakeObject<frmOrder>();
    ASSERT_TRUE(Shown(*order));
    for (std::size_t empty = 0; empty < Order::kFields.size(); ++empty) {
        FillIn(*order, empty);
        dialogs.Said.clear();
        Click(Control(order.Get(), "OkBtn"));
        ASSERT_EQ(dialogs.Said.size(), 1U);
        EXPECT_EQ(dialogs.Said[0], "Data must be entered in all boxes provided");
        EXPECT_EQ(order->focusWidget()->objectName(), Order::kFields[empty].Control);
        EXPECT_TRUE(order->isVisible());
    }
    order->Unload();
}

TEST_F(frmOrderTest, CompleteGoesOnToASummaryThatEndsTheFormOrLeadsBack) {
    struct Case {
        const char* What;
        const char* Button;
        bool FormStays;
    };
    for (const auto& [what, button, stays] :
         {Case{"back", "BackBtn", true}, {"close", "CloseBtn", false}}) {
        SCOPED_TRACE(what);
        const auto order = MakeObject<frmOrder>();
        ASSERT_TRUE(Shown(*order));
        FillIn(*order);
        WhenModal<frmOrderSummary> summary([&, name = button](frmOrderSummary& window) {
            const QString text = Control<QPlainTextEdit>(&window, "txtSummary")->toPlainText();
            EXPECT_TRUE(text.contains("value 0"));
            EXPECT_TRUE(text.contains("value 7"));
            Click(Control(&window, name));
        });
        QTest::keyClick(order->focusWidget(), Qt::Key_Return);  // from within a box
        EXPECT_EQ(order->Loaded(), stays);
        EXPECT_EQ(Control<QLineEdit>(order.Get(), "txtName")->text(), "value 0");
        order->Unload();
    }
}

TEST_F(frmOrderTest, LabelsLeadToTheirBoxes) {
    const auto order = MakeObject<frmOrder>();
    ASSERT_TRUE(Shown(*order));
    for (const OrderField& field : Order::kFields) {
        const QString caption = ToQString(field.Caption);
        const QChar letter = caption[caption.indexOf('&') + 1].toUpper();
        QTest::keyClick(order.Get(), static_cast<Qt::Key>(letter.unicode()), Qt::AltModifier);
        EXPECT_EQ(order->focusWidget()->objectName(), field.Control) << caption.toStdString();
    }
    order->Unload();
}

TEST_F(frmOrderTest, SummaryIsCopiedPrintedAndSavedWhole) {
    SpokenDialogs dialogs;
    const QTemporaryDir folder;
    const auto summary = MakeObject<frmOrderSummary>(Complete());
    ASSERT_TRUE(Shown(*summary));
    const QString text = Control<QPlainTextEdit>(summary.Get(), "txtSummary")->toPlainText();
    Click(Control(summary.Get(), "CopyBtn"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text);
    Click(Control(summary.Get(), "PrintBtn"));
    EXPECT_EQ(dialogs.Printed, std::vector<QString>{text});

    dialogs.Path = folder.filePath("order.txt");
    Click(Control(summary.Get(), "SaveBtn"));
    QFile file(*dialogs.Path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), text);
    EXPECT_TRUE(dialogs.Said.empty());

    dialogs.Path = folder.filePath("no such folder/order.txt");
    Click(Control(summary.Get(), "SaveBtn"));
    ASSERT_EQ(dialogs.Said.size(), 1U) << "a failure is told";
    EXPECT_TRUE(dialogs.Said[0].startsWith("The order could not be saved."));
    dialogs.Path.reset();
    Click(Control(summary.Get(), "SaveBtn"));
    EXPECT_EQ(dialogs.Said.size(), 1U) << "cancelling is no failure";
    summary->Unload();
}

}  // namespace
}  // namespace zorvane::test
