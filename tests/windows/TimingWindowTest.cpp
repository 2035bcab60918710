#include <QClipboard>
#include <QFile>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolTip>

#include "app/FrmMainDemo.h"
#include "app/frmOrder.h"
#include "demos/FrmDemo1.h"
#include "demos/TimingChart.h"
#include "forms/Colour.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

constexpr std::array kButtons{"Command1", "Command2", "Command5", "Command3"};  // by column

class FrmDemo1Test : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        Screen::The().SetMousePointer(Pointer::Hourglass);  // as the main window leaves it
        // Each test takes a quarter of a second and two milliseconds by the fine clock.
        window_ = MakeObject<FrmDemo1>(TimingRun::Clocks{[this] {
                                                             if (whileRunning_) whileRunning_();
                                                             return 0.25F * static_cast<float>(
                                                                                ++secondsRead_);
                                                         },
                                                         [this] { return 0.002 * ++fineRead_; }});
        ASSERT_TRUE(Shown(*window_));
        list_ = Control<ListView>(window_.Get(), "LV");
        count_ = Control<QLineEdit>(window_.Get(), "Text1");
        chart_ = Control<TimingChart>(window_.Get(), "Chart");
    }
    void TearDown() override {
        window_->Unload();
        window_ = nullptr;
        WindowTest::TearDown();
    }
    void Press(const char* button) { Click(Control(window_.Get(), button)); }
    [[nodiscard]] QStringList Column(int column) const {
        QStringList cells;
        for (int row = 1; row <= list_->RowCount(); ++row) cells << list_->Cell(row, column);
        return cells;
    }

    Ref<FrmDemo1> window_;
    ListView* list_ = nullptr;
    QLineEdit* count_ = nullptr;
    TimingChart* chart_ = nullptr;
    int secondsRead_ = 0;
    int fineRead_ = 0;
    std::function<void()> whileRunning_;
};

TEST_F(FrmDemo1Test, OpensWithItsTextsEmptyColumnsAndTheDefaultPointer) {
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    EXPECT_EQ(window_->Caption(), u"Zorvane - Class Code Generator Demonstration");
    EXPECT_EQ(count_->text(), "2000");
    EXPECT_EQ(Control<Label>(window_.Get(), "Label1")->Caption(),
              u"Number of Items In Collection:");
    EXPECT_EQ(Control<Label>(window_.Get(), "Label2")->Caption(),
              u"Min: 2000  .....  Max: 10000 Items");
    QStringList captions;
    for (const char* one : kButtons) captions << Control<QPushButton>(window_.Get(), one)->text();
    EXPECT_EQ(captions.join(";"),
              "Std Vesk Collection;ZVKeyList Code;ZVCollection Code;Quarm - Hash Table");
    EXPECT_EQ(list_->RowCount(), 14);
    for (int column = 0; column < 5; ++column) {
        EXPECT_EQ(list_->ColumnWidth(column), column == 0 ? 2505.0F : 1200.0F)  // whole pixels
            << column;
    }
    EXPECT_EQ(list_->Cell(5, 0), "Sub-Total.. Add & Item methods");
    EXPECT_EQ(Column(1).join(""), "");
    EXPECT_EQ(secondsRead_, 0);
}

TEST_F(FrmDemo1Test, EachButtonFillsItsOwnColumnAndEndsTheHourglass) {
    const QStringList others{"0.2500", "0.2500", "0.2500", "0.2500", "1.", "", "0.2500",
                             "0.2500", "",       "0.2500", "0.2500", "",   "", ""};
    QStringList platforms = others;
    platforms[9] = "Not Applicable";
    for (int column = 1; column <= 4; ++column) {
        Press(kButtons.at(static_cast<std::size_t>(column) - 1));
        EXPECT_EQ(Column(column), column == 1 ? platforms : others) << column;
        for (int later = column + 1; later <= 4; ++later) {
            EXPECT_EQ(Column(later).join(""), "") << "column " << later << " after " << column;
        }
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    }
    EXPECT_EQ(secondsRead_, 15 + 3 * 16);
}

TEST_F(FrmDemo1Test, CorrectsTheItemCountAndKeepsWhatIsWithinItsBounds) {
    const struct {
        const char* typed;
        const char* shown;
        const char* operations;
        const char* said = "";
    } rows[] = {{"5", "50", "50", "Raised to 50, the least."},
                {"20000", "10000", "10,000", "Lowered to 10000, the most."},
                {"2000.5", "2000.5", "2,000"}};
    for (const auto& row : rows) {
        count_->setText(row.typed);
        Press("Command3");
        EXPECT_EQ(count_->text(), row.shown) << row.typed;
        EXPECT_EQ(Control<QLabel>(window_.Get(), "lblStatus")->text(), row.said) << row.typed;
        const QModelIndex cell = list_->model()->index(0, 4);
        EXPECT_TRUE(cell.data(Qt::ToolTipRole)
                        .toString()
                        .contains(QLatin1String(row.operations) + " operations"))
            << cell.data(Qt::ToolTipRole).toString().toStdString();
    }
}

TEST_F(FrmDemo1Test, RowsFillOneByOneWithoutLettingOtherInputIn) {
    QStringList filled;
    bool ordered = false;
    QObject::connect(window_.Get(), &FrmDemo1::OrderRequested, [&] {
        ordered = true;
        filled << "order";
    });
    whileRunning_ = [&] {
        filled << QString::number(14 - Column(2).count(QString()));
        if (secondsRead_ != 3) return;
        // A click that comes in the middle of a run.
        QWidget* order = Control(window_.Get(), "OrderBtn");
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const QPointF at = order->rect().center();
            QCoreApplication::postEvent(
                order, new QMouseEvent(type, at, order->mapToGlobal(at), Qt::LeftButton,
                                       Qt::LeftButton, Qt::NoModifier));
        }
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
    };
    Press("Command2");
    EXPECT_TRUE(QTest::qWaitFor([&] { return ordered; }));
    EXPECT_EQ(filled.join(" "), "0 0 1 1 2 2 3 3 5 5 6 6 7 7 8 8 order");
}

TEST_F(FrmDemo1Test, AnotherRunClearsItsColumnFirstAndLeavesTheOthers) {
    Press("Command1");
    Press("Command2");
    const QStringList others = Column(1);
    bool cleared = false;
    whileRunning_ = [&] { cleared = cleared || Column(2).join("").isEmpty(); };
    Press("Command2");
    EXPECT_TRUE(cleared);
    EXPECT_EQ(Column(1), others);
}

TEST_F(FrmDemo1Test, TheChartHasABarForEveryResultWithItsFineTime) {
    for (const char* button : kButtons) Press(button);
    for (int test = 1; test <= 8; ++test) {
        for (int column = 1; column <= 4; ++column) {
            EXPECT_FALSE(chart_->BarOf(test, column).isEmpty()) << test << ", " << column;
            EXPECT_TRUE(QRectF(chart_->rect()).contains(chart_->BarOf(test, column)));
        }
    }
    EXPECT_LT(chart_->BarOf(1, 1).right(), chart_->BarOf(1, 2).right());
    const QPoint at = chart_->BarOf(7, 1).center().toPoint();
    QHelpEvent help(QEvent::ToolTip, at, chart_->mapToGlobal(at));
    QCoreApplication::sendEvent(chart_, &help);
    EXPECT_EQ(QToolTip::text(),
              QString::fromUtf8("Vesk Collection, Remove method (by string)\n"
                                "2.00 ms for 1,000 operations, 2.00 \xC2\xB5s each"));
    QToolTip::hideText();
}

TEST_F(FrmDemo1Test, TheBarsStandOutFromALightAndADarkBackground) {
    for (int column = 1; column <= 4; ++column) {
        EXPECT_GE(Contrast(QColor::fromRgb(ContenderColour(column, false)), Qt::white), 3)
            << column;
        EXPECT_GE(Contrast(QColor::fromRgb(ContenderColour(column, true)), QColor(42, 46, 50)), 3)
            << column;
    }
}

TEST_F(FrmDemo1Test, TheTableGoesToTheClipboardAndIntoAFileWithItsFineTimes) {
    Press("Command5");
    Press("CopyBtn");
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    EXPECT_TRUE(copied->text().contains("\nAdd method\t\t\t0.2500\t\t\t\t2.000000\t"));
    EXPECT_TRUE(copied->html().contains("<td>Add method</td><td></td><td></td><td>0.2500</td>"));

    QTemporaryDir folder;
    SpokenDialogs dialogs;
    dialogs.Path = folder.filePath("times.csv");
    Press("SaveBtn");
    QFile file(*dialogs.Path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("\r\nAdd method,,,0.2500,,,,2.000000,,,,1000.0,\r\n"));
    EXPECT_TRUE(dialogs.Said.empty());
}

TEST_F(FrmDemo1Test, KeysPressTheButtonsAndEscapeCloses) {
    QTest::keyClick(window_.Get(), Qt::Key_3, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list_->Cell(11, 3) == "0.2500"; }));
    QTest::keyClick(count_, Qt::Key_Escape);
    EXPECT_FALSE(window_->Loaded());
}

TEST_F(WindowTest, TheMainWindowsSecondButtonOpensAFreshTimingWindowWithAnOrderForm) {
    const auto main = MakeObject<FrmMainDemo>();
    ASSERT_TRUE(Shown(*main));
    for (int opening = 1; opening <= 2; ++opening) {
        WhenModal<FrmDemo1> timing([&](FrmDemo1& window) {
            EXPECT_EQ(window.windowHandle()->transientParent(), main->windowHandle());
            EXPECT_EQ(Control<ListView>(&window, "LV")->Cell(1, 1), "") << "opening " << opening;
            Click(Control(&window, "Command1"));
            EXPECT_NE(Control<ListView>(&window, "LV")->Cell(1, 1), "");
            if (opening == 2) {
                WhenModal<frmOrder> order([](frmOrder& form) { form.Unload(); });
                Click(Control(&window, "OrderBtn"));
            }
            window.CloseBtn_Click();
        });
        main->Command1_Click(1);
    }
    main->Unload();
}

}  // namespace
}  // namespace zorvane::test
