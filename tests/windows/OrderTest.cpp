#include <sys/resource.h>

#include <csignal>

#include "program/app/Order.h"
#include "program/app/frmOrder.h"
#include "program/app/frmOrderSummary.h"
#include "program/forms/Label.h"
#include "program/forms/Strings.h"
#include "tests/windows/AnsweringDialogs.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

Order Complete() {
    Order order;
    for (std::size_t at = 0; at < order.Answers.size(); ++at) {
        order.Answers[at] = Text(u"answer ") + Text(Order::kFields[at].Name);
    }
    return order;
}

TEST(OrderTest, KeptBlanksAreNoGap) {
    Order order = Complete();
    order.Answers[0] = u"   ";
    order.Answers[7] = Text();
    EXPECT_EQ(order.FirstEmpty(), 7U);
}

TEST(OrderTest, OnlyWhatCannotBeAnAddressOrANumberIsRemarkedUpon) {
    constexpr std::size_t kMail = 6, kNumber = 7;
    const std::tuple<std::size_t, const char16_t*, bool> rows[] = {
        {kMail, u"", false},   {kMail, u"ada at home", true}, {kMail, u"ada@x", false},
        {kNumber, u"", false}, {kNumber, u" 00 ", true},      {kNumber, u"10", false},
        {0, u"0", false},      {kNumber, u"-2", true},        {kNumber, u"three", false}};
    for (const auto& [field, answer, remarked] : rows) {
        Order order;
        order.Answers.at(field) = answer;
        EXPECT_EQ(order.Remark(field).Empty(), !remarked) << order.Answers.at(field);
    }
}

TEST(OrderTest, SummaryHoldsEveryAnswerBehindItsNameInOneColumn) {
    const QStringList lines = ToQString(Complete().Summary(u"1.2.3", u"2026-03-01")).split('\n');
    EXPECT_EQ(lines.value(2), "Date:         2026-03-01");
    EXPECT_EQ(lines.value(3), "Version:      1.2.3");
    for (std::size_t at = 0; at < Order::kFields.size(); ++at) {
        const QString name = ToQString(Order::kFields[at].Name);
        EXPECT_EQ(lines.value(5 + static_cast<int>(at)),
                  (name + ":").leftJustified(14) + "answer " + name);
    }
}

class frmOrderTest : public ShownWindowTest<frmOrder> {
  protected:
    AnsweringDialogs dialogs_;
    // By the labels' mnemonics, as a person without a mouse would go from box to box.
    QLineEdit* GoTo(const OrderField& field) {
        const QString caption = ToQString(field.Caption);
        const int letter = caption[caption.indexOf('&') + 1].toUpper().unicode();
        QTest::keyClick(window_.Get(), static_cast<Qt::Key>(letter), Qt::AltModifier);
        EXPECT_EQ(window_->focusWidget()->objectName(), field.Control);
        return At<QLineEdit>(field.Control);
    }
};

TEST_F(frmOrderTest, AsksBeforeWhatWasEnteredIsLost) {
    QTest::keyClicks(GoTo(Order::kFields[6]), "ada");
    for (const bool agrees : {false, true}) {
        dialogs_.Agrees = agrees;
        QTest::keyClick(window_->focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(window_->Loaded(), !agrees);
    }
    EXPECT_EQ(dialogs_.Said.size(), 2);
}

// And the cursor stands where something lacks until then.
TEST_F(frmOrderTest, CompleteGoesOnToASummaryThatLeadsBackOrEndsTheForm) {
    QGuiApplication::clipboard()->setText("pasted\n");  // a row of a list ends its line
    for (const OrderField& field : Order::kFields) {
        Press("OkBtn");
        EXPECT_EQ(window_->focusWidget()->objectName(), field.Control);
        GoTo(field)->paste();
    }
    const QString refusal("Data must be entered in all boxes provided");
    EXPECT_EQ(std::exchange(dialogs_.Said, {}), QStringList(8, refusal));
    for (const char* button : {"BackBtn", "CloseBtn"}) {
        SCOPED_TRACE(button);
        WhenModal<frmOrderSummary> summary([&](frmOrderSummary& window) {
            const QString text = Control<QPlainTextEdit>(&window, "txtSummary")->toPlainText();
            EXPECT_EQ(text.count("pasted"), 8);
            EXPECT_EQ(text.count('\n'), 5 + 8) << "one line for each answer";
            QTest::keyClick(window.focusWidget(), Qt::Key_Return);
            EXPECT_EQ(Control<Label>(&window, "lblStatus")->text().isEmpty(), false) << "copied";
            Click(Control(&window, button));
        });
        QTest::keyClick(window_->focusWidget(), Qt::Key_Return);  // from within a box
        EXPECT_EQ(window_->Loaded(), button == QLatin1String("BackBtn"));
    }
    EXPECT_TRUE(dialogs_.Said.empty()) << "of what was kept nothing is asked";
}

class frmOrderSummaryTest : public ShownWindowTest<frmOrderSummary> {
  protected:
    frmOrderSummaryTest() : ShownWindowTest(MakeObject<frmOrderSummary>(Complete())) {}
};

TEST_F(frmOrderSummaryTest, IsCopiedPrintedAndSavedWholeAndAFailureIsTold) {
    AnsweringDialogs dialogs;
    const QString text = At<QPlainTextEdit>("txtSummary")->toPlainText();
    dialogs.Agrees = false;
    window_->Unload();
    EXPECT_TRUE(window_->Loaded() && !dialogs.Said.takeFirst().isEmpty()) << "lost unasked";
    Press("CopyBtn");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text);
    Press("PrintBtn");
    EXPECT_EQ(dialogs.Printed, text);
    Press("SaveBtn");  // and Cancel
    const QTemporaryDir folder;
    dialogs.Answer = folder.filePath("order.txt");
    Press("SaveBtn");
    QFile file(*dialogs.Answer);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), text);
    EXPECT_TRUE(dialogs.Said.empty());
    std::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t most : {0U, 16U}) {
        rlimit usual{};
        ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &usual), 0);
        const rlimit small{most, usual.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
        Press("SaveBtn");
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &usual), 0);
        EXPECT_TRUE(dialogs.Said.value(0).startsWith("The order could not be saved.")) << most;
        dialogs.Said.clear();
    }
    ASSERT_TRUE(file.seek(0));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), text) << "a disk without room cut what was there";
}

}  // namespace
}  // namespace zorvane::test
