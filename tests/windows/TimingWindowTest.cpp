#include <set>

#include "program/demos/FrmDemo1.h"
#include "program/demos/TimingChart.h"
#include "program/forms/Colour.h"
#include "program/forms/Label.h"
#include "tests/windows/AnsweringDialogs.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class FrmDemo1Test : public ShownWindowTest<FrmDemo1> {
  protected:
    // Each test takes a quarter of a second and two milliseconds by the fine clock.
    FrmDemo1Test()
        : ShownWindowTest(MakeObject<FrmDemo1>(
              TimingRun::Clocks{[this] {
                                    if (whileRunning_) whileRunning_();
                                    return 0.25F * static_cast<float>(++secondsRead_);
                                },
                                [this] { return 0.002 * ++fineRead_; }})) {}

    // The four result columns, each with its rows joined.
    [[nodiscard]] QStringList Columns() const {
        QStringList columns;
        for (int column = 1; column <= 4; ++column) columns << ColumnOf(*list_, column).join(";");
        return columns;
    }

    ListView* list_ = At<ListView>("LV");
    TimingChart* chart_ = At<TimingChart>("Chart");
    int secondsRead_ = 0;
    int fineRead_ = 0;
    std::function<void()> whileRunning_;
};

TEST_F(FrmDemo1Test, EachKeyFillsItsOwnColumnAndEndsTheHourglass) {
    QStringList expected(4, QString(13, ';'));
    EXPECT_EQ(Columns(), expected);
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default) << "the opener's stayed";
    for (int column = 0; column < 4; ++column) {
        QTest::keyClick(window_.Get(), static_cast<Qt::Key>(Qt::Key_1 + column), Qt::AltModifier);
        expected[column] = QString("0.2500;0.2500;0.2500;0.2500;1.;;0.2500;0.2500;;%1;0.2500;;;")
                               .arg(column == 0 ? "Not Applicable" : "0.2500");
        EXPECT_TRUE(QTest::qWaitFor([&] { return Columns() == expected; })) << column;
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    }
    Press("CopyBtn");
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    EXPECT_TRUE(
        copied->text().contains("\nAdd method\t0.2500\t0.2500\t0.2500\t0.2500\t2.000000\t"));
    EXPECT_TRUE(copied->html().contains("<td>Add method</td><td>0.2500</td>"));
}

TEST_F(FrmDemo1Test, CorrectsTheItemCountAndKeepsWhatIsWithinItsBounds) {
    const std::array<const char*, 4> rows[] = {
        {"5", "50", " 50 operations", "Raised to 50, the least."},
        {"20000", "10000", " 10,000 operations", "Lowered to 10000, the most."},
        {"2000.5", "2000.5", " 2,000 operations", ""},
    };
    auto* count = At<QLineEdit>("Text1");
    EXPECT_EQ(count->text(), "2000");
    EXPECT_EQ(At<Label>("Label2")->Caption(), u"Min: 2000  .....  Max: 10000 Items");
    for (const auto& [typed, shown, operations, said] : rows) {
        SCOPED_TRACE(typed);
        count->selectAll();
        QTest::keyClicks(count, typed);
        EXPECT_EQ(At<QLabel>("lblStatus")->text(), "") << "said of another number";
        Press("Command3");
        EXPECT_EQ(count->text(), shown);
        EXPECT_EQ(At<QLabel>("lblStatus")->text(), said);
        const QString toolTip = list_->model()->index(0, 4).data(Qt::ToolTipRole).toString();
        EXPECT_TRUE(toolTip.contains(operations)) << toolTip.toStdString();
    }
}

TEST_F(FrmDemo1Test, RowsOfAClearedColumnFillOneByOneWithoutLettingOtherInputIn) {
    Press("Command2");
    secondsRead_ = 0;
    QString filled;
    QObject::connect(window_.Get(), &FrmDemo1::OrderRequested, [&] { filled += "order"; });
    whileRunning_ = [&] {
        if (filled.isEmpty()) {
            EXPECT_TRUE(chart_->BarOf(1, 2).isEmpty()) << "a bar of the run before";
        }
        filled += QString("%1 ").arg(14 - Columns().at(1).split(';').count(QString()));
        if (secondsRead_ != 3) return;
        // It comes in the middle of a run.
        QMetaObject::invokeMethod(At("OrderBtn"), "click", Qt::QueuedConnection);
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
    };
    Press("Command2");
    EXPECT_TRUE(QTest::qWaitFor([&] { return filled.endsWith("order"); }));
    EXPECT_EQ(filled, "0 0 1 1 2 2 3 3 5 5 6 6 7 7 8 8 order");
}

TEST_F(FrmDemo1Test, TheChartHasABarForEveryResultWithItsFineTime) {
    Press("RunAllBtn");
    for (int test = 1; test <= 8; ++test) {
        for (int column = 1; column <= 4; ++column) {
            const QRectF bar = chart_->BarOf(test, column);
            EXPECT_TRUE(!bar.isEmpty() && QRectF(chart_->rect()).contains(bar))
                << test << ", " << column;
        }
    }
    EXPECT_LT(chart_->BarOf(1, 1).right(), chart_->BarOf(1, 2).right());
    const QPoint at = chart_->BarOf(7, 1).center().toPoint();
    QHelpEvent help(QEvent::ToolTip, at, chart_->mapToGlobal(at));
    QCoreApplication::sendEvent(chart_, &help);
    EXPECT_EQ(QToolTip::text(),
              QString::fromUtf8("Vesk Collection, Remove method (by string)\n"
                                "2.00 ms for 1,000 operations, 2.00 \xC2\xB5s each\n"
                                "Timed by the finer clock alone"));
    QToolTip::hideText();
}

// Both scroll bars once stayed, each for the sake of the other.
TEST_F(FrmDemo1Test, EveryColumnIsWholeAtEverySizeAndHasItsStatedWidthAtTheUsualOne) {
    const QSize usual = window_->size();
    for (const QSize size : {QSize(720, 500), QSize(1270, 680), QSize(1, 1), usual}) {
        window_->resize(size);
        QTest::qWait(1);
        EXPECT_GE(list_->viewport()->width(), list_->header()->length()) << size.width();
    }
    EXPECT_EQ(list_->header()->length(), 167 + 4 * 80) << "2500 and four times 1200 twips";
    EXPECT_FALSE(list_->verticalScrollBar()->isVisible());
}

TEST_F(FrmDemo1Test, EnterInTheBoxRunsWhatWasRunLastAndFinerTimesFillTheCells) {
    auto* count = At<QLineEdit>("Text1");
    Press("FineBox");
    count->setFocus();
    QTest::keyClick(count, Qt::Key_Return);
    for (const QString& column : Columns()) {
        EXPECT_EQ(column,
                  "2.00 ms;2.00 ms;2.00 ms;2.00 ms;8.00 ms;;2.00 ms;2.00 ms;;2.00 ms;"
                  "2.00 ms;;;");
    }
    Press("Command5");
    secondsRead_ = 0;
    count->setFocus();
    QTest::keyClick(count, Qt::Key_Return);
    EXPECT_EQ(secondsRead_, 16) << "one container alone";
    Press("FineBox");
    EXPECT_TRUE(Columns().at(0).contains("Not Applicable") && Columns().at(2).startsWith("0.25"));
}

TEST_F(FrmDemo1Test, ThePictureIsOfTheKindThatItsNameSaysAndAFailureNamesTheFile) {
    AnsweringDialogs dialogs;
    const QTemporaryDir folder;
    for (const auto& [name, begin] : {std::pair("a.png", "\x89PNG"), {"a.SVG", "<?xml"}}) {
        dialogs.Answer = folder.filePath(name);
        Press("SavePictureBtn");
        QFile saved(*dialogs.Answer);
        EXPECT_TRUE(saved.open(QIODevice::ReadOnly) && saved.readAll().startsWith(begin)) << name;
    }
    EXPECT_EQ(At<Label>("lblStatus")->Caption(), u"Saved as a.SVG.");
    Press("SaveBtn");
    EXPECT_EQ(QFileInfo(dialogs.Suggested).absolutePath(), QDir(folder.path()).absolutePath());
    dialogs.Answer = folder.filePath("none/times.csv");
    Press("SaveBtn");
    EXPECT_TRUE(dialogs.Said.join("").contains(*dialogs.Answer));
}

TEST(ContenderColour, BarsStandOutFromEachOtherAndFromALightAndADarkBackground) {
    std::set<QRgb> colours;
    for (const bool dark : {false, true}) {
        for (int column = 1; column <= 4; ++column) {
            const QColor colour = QColor::fromRgb(ContenderColour(column, dark));
            colours.insert(colour.rgb());
            EXPECT_GE(Contrast(colour, dark ? QColor(42, 46, 50) : QColor(Qt::white)), 3);
        }
    }
    EXPECT_EQ(colours.size(), 8U);
}

}  // namespace
}  // namespace zorvane::test
