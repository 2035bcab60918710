#include <QClipboard>
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

class frmOrderTest : public ShownWindowTest<frmOrder> {};

Order Complete() {
    Order order;
    for (std::size_t at = 0; at < order.Answers.size(); ++at) {
        order.Answers[at] = Text(u"answer ") + Text(Order::kFields[at].Name);
    }
    return order;
}

// Goes from box to box by the labels' mnemonics, as a person without a mouse would.
void FillIn(frmOrder& window, std::size_t leaveEmpty = Order::kFields.size()) {
    for (std::size_t at = 0; at < Order::kFields.size(); ++at) {
        const QString caption = ToQString(Order::kFields[at].Caption);
        const QChar letter = caption[caption.indexOf('&') + 1].toUpper();
        QTest::keyClick(&window, static_cast<Qt::Key>(letter.unicode()), Qt::AltModifier);
        QWidget* box = window.focusWidget();
        ASSERT_EQ(box->objectName(), Order::kFields[at].Control) << caption.toStdString();
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
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
    const QStringList lines = summary.split('\n');
    for (std::size_t at = 0; at < Order::kFields.size(); ++at) {
        const QString line = lines.value(5 + static_cast<int>(at));
        EXPECT_TRUE(line.startsWith(ToQString(Order::kFields[at].Name) + ":")) << at;
        EXPECT_EQ(line.indexOf("answer"), lines.value(5).indexOf("answer")) << line.toStdString();
    }
}

TEST_F(frmOrderTest, RefusesWhileABoxIsEmptyAndPutsTheCursorThere) {
    SpokenDialogs dialogs;
    for (std::size_t empty = 0; empty < Order::kFields.size(); ++empty) {
        FillIn(*window_, empty);
        dialogs.Said.clear();
        Click(Control(window_.Get(), "OkBtn"));
        EXPECT_EQ(dialogs.Said, std::vector<QString>{"Data must be entered in all boxes provided"});
        EXPECT_EQ(window_->focusWidget()->objectName(), Order::kFields[empty].Control);
        EXPECT_TRUE(window_->isVisible());
    }
}

TEST_F(frmOrderTest, CompleteGoesOnToASummaryThatLeadsBackOrEndsTheForm) {
    FillIn(*window_);
    QGuiApplication::clipboard()->setText("pasted\n");  // a row of a list ends its line
    auto* phone = Control<QLineEdit>(window_.Get(), "txtPhone");
    phone->clear();
    phone->paste();
    for (const char* button : {"BackBtn", "CloseBtn"}) {
        SCOPED_TRACE(button);
        WhenModal<frmOrderSummary> summary([&](frmOrderSummary& window) {
            const QString text = Control<QPlainTextEdit>(&window, "txtSummary")->toPlainText();
            EXPECT_TRUE(text.contains("value 0") && text.contains("value 7"));
            EXPECT_EQ(text.count('\n'), 5 + 8) << "one line for each answer";
            Click(Control(&window, button));
        });
        QTest::keyClick(window_->focusWidget(), Qt::Key_Return);  // from within a box
        EXPECT_EQ(window_->Loaded(), button == QLatin1String("BackBtn"));
        EXPECT_EQ(Control<QLineEdit>(window_.Get(), "txtName")->text(), "value 0");
    }
}

class frmOrderSummaryTest : public WindowTest {};

TEST_F(frmOrderSummaryTest, IsCopiedPrintedAndSavedWhole) {
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
