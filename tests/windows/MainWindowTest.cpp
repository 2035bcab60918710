#include <QPushButton>

#include "app/FrmMainDemo.h"
#include "app/FrmThank.h"
#include "app/frmOrder.h"
#include "app/frmSplash.h"
#include "app/modStartUp.h"
#include "demos/frmDemo0.h"
#include "forms/Label.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class StartUp : public WindowTest {};
class FrmMainDemoTest : public ShownWindowTest<FrmMainDemo> {};

QStringList VisibleForms() {
    QStringList names;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && dynamic_cast<const Form*>(window)) names << window->objectName();
    }
    return names;
}

TEST_F(StartUp, SplashThenMainThenClosingWindowThenTheEnd) {
    QStringList seen;
    WhenModal<frmSplash> splash([&](frmSplash& window) {
        seen << VisibleForms();  // main is loaded, not shown
        EXPECT_EQ(window.windowHandle()->transientParent()->objectName(), "FrmMainDemoWindow");
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Arrow);
        EXPECT_TRUE(Control(&window, "CloseBtn")->isVisible());
        QTest::keyClick(&window, Qt::Key_C, Qt::AltModifier);
    });
    WhenModal<FrmMainDemo> main([&](FrmMainDemo& window) {
        seen << VisibleForms();
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Arrow) << "what the splash has left";
        Click(Control(&window, "CloseBtn"));
        EXPECT_FALSE(window.Loaded());
    });
    WhenModal<FrmThank> thank([&](FrmThank& window) {
        seen << window.objectName();
        Click(Control(&window, "CloseBtn"));
    });
    modStartUp::Main();
    EXPECT_EQ(seen, (QStringList{"frmSplash", "FrmMainDemo", "FrmThank"}));
}

TEST_F(StartUp, ClosingMainByItsFrameSkipsTheClosingWindow) {
    WhenModal<frmSplash> splash([](frmSplash& window) { window.CloseBtn_Click(); });
    WhenModal<FrmMainDemo> main([](FrmMainDemo& window) {
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "Escape does not end the program";
        window.close();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    });
    modStartUp::Main();
}

TEST_F(FrmMainDemoTest, LayoutFollowsTheInnerSizeInTwips) {
    const struct {
        const char* what;
        QSize pixels;
    } rows[] = {{"as designed", window_->size()},
                {"wider and higher", {1000, 800}},
                {"not divisible by 16", {777, 555}},
                {"as small as it gets", window_->minimumSize()}};
    // To the pixel, as twips.
    const auto stands = [](const QWidget* control, double x, double y, double wide, double high) {
        const QRect at = control->geometry();
        for (const auto& [twips, pixels] :
             {std::pair{x, at.x()}, {y, at.y()}, {wide, at.width()}, {high, at.height()}}) {
            EXPECT_LT(std::abs(twips / 15 - pixels), 1) << control->objectName().toStdString();
        }
    };
    for (const auto& [what, pixels] : rows) {
        SCOPED_TRACE(what);
        window_->resize(pixels);
        const double width = window_->ScaleWidth();
        const double step = static_cast<double>(window_->ScaleHeight()) * 3 / 16;
        EXPECT_EQ(width, pixels.width() * 15);
        stands(Control(window_.Get(), "EditLabel1"), 200, 0, width - 400, step);
        for (int index = 0; index < 3; ++index) {
            stands(Control(window_.Get(), "Command1", index), 200, step * (index + 1), width - 400,
                   step - 200);
        }
    }
}

TEST_F(FrmMainDemoTest, KeptOnlyTheSecondAndThirdCaptionsBeginWithALineBreak) {
    for (int index = 0; index < 3; ++index) {
        const auto* button = Control<QPushButton>(window_.Get(), "Command1", index);
        EXPECT_EQ(button->text().startsWith("\r\n"), index > 0) << index;
    }
    EXPECT_TRUE(Control<QLabel>(window_.Get(), "EditLabel1")->text().endsWith("Generator ."));
}

TEST_F(FrmMainDemoTest, WindowsNestThreeDeepAndTheOuterOnesWait) {
    WhenModal<frmOrder> order([&](frmOrder& window) {
        EXPECT_EQ(window.windowHandle()->transientParent()->objectName(), "frmDemo0Window");
        Click(Control(window_.Get(), "CloseBtn"));
        EXPECT_TRUE(window.isVisible()) << "a click below a modal window goes nowhere";
        EXPECT_TRUE(window_->isVisible());
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
    WhenModal<frmDemo0> demo([&](frmDemo0& window) {
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
        Click(Control(&window, "OrderBtn"));
        EXPECT_TRUE(order.Done());
        EXPECT_TRUE(window.isVisible());
        Click(Control(&window, "CloseBtn"));
    });
    Click(Control(window_.Get(), "Command1", 0));
    EXPECT_TRUE(demo.Done());
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass) << "nobody has set it back";
}

TEST_F(FrmMainDemoTest, EveryIndexButOneAndTwoOpensTheKeyList) {
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}}) {
        WhenModal<frmDemo0> demo([](frmDemo0& window) { window.CloseBtn_Click(); });
        window_->Command1_Click(index);
        EXPECT_TRUE(demo.Done()) << index;
    }
}

TEST_F(FrmMainDemoTest, OrderIsReachedFromMainAndFromTheClosingWindow) {
    {
        WhenModal<frmOrder> order([&](frmOrder& window) { window.CancelBtn_Click(); });
        QTest::keyClick(window_.Get(), Qt::Key_O, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return order.Done(); }));
    }
    WhenModal<FrmThank> thank([&](FrmThank& window) {
        WhenModal<frmOrder> order([&](frmOrder& form) { form.CancelBtn_Click(); });
        Click(Control(&window, "OrderBtn"));
        EXPECT_TRUE(order.Done());
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    window_->CloseBtn_Click();
    EXPECT_FALSE(window_->Loaded());
}

}  // namespace
}  // namespace zorvane::test
