#include <QLabel>
#include <QPushButton>

#include "app/FrmMainDemo.h"
#include "app/FrmThank.h"
#include "app/frmOrder.h"
#include "app/frmSplash.h"
#include "app/modStartUp.h"
#include "demos/frmDemo0.h"
#include "forms/Label.h"
#include "forms/Strings.h"
#include "forms/WrapButton.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class StartUp : public WindowTest {};
class FrmMainDemoTest : public WindowTest {};

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
        seen << window.objectName();
        EXPECT_EQ(VisibleForms(), QStringList{"frmSplash"}) << "main is loaded, not shown";
        EXPECT_EQ(window.windowHandle()->transientParent()->objectName(), "FrmMainDemoWindow");
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Arrow);
        EXPECT_TRUE(Control(&window, "CloseBtn")->isVisible());
        QTest::keyClick(&window, Qt::Key_C, Qt::AltModifier);
    });
    WhenModal<FrmMainDemo> main([&](FrmMainDemo& window) {
        seen << window.objectName();
        EXPECT_EQ(VisibleForms(), QStringList{"FrmMainDemo"});
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
        window.close();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    });
    modStartUp::Main();
}

TEST_F(FrmMainDemoTest, LayoutFollowsTheInnerSizeInTwips) {
    const auto main = MakeObject<FrmMainDemo>();
    ASSERT_TRUE(Shown(*main));
    struct Case {
        const char* What;
        QSize Pixels;
    };
    const auto roundsTo = [](double twips, int pixels) {
        return std::abs(twips / 15 - pixels) < 1;
    };
    for (const auto& [what, pixels] : {Case{"as designed", main->size()},
                                       {"wider and higher", {1000, 800}},
                                       {"not divisible by 16", {777, 555}},
                                       {"as small as it gets", main->minimumSize()}}) {
        SCOPED_TRACE(what);
        main->resize(pixels);
        const double width = main->ScaleWidth();
        const double height = main->ScaleHeight();
        EXPECT_EQ(width, pixels.width() * 15);
        const QRect label = Control(main.Get(), "EditLabel1")->geometry();
        EXPECT_TRUE(roundsTo(200, label.x())) << label.x();
        EXPECT_TRUE(roundsTo(width - 400, label.width())) << label.width();
        for (int index = 0; index < 3; ++index) {
            const QRect button = Control(main.Get(), "Command1", index)->geometry();
            EXPECT_TRUE(roundsTo(200, button.x())) << button.x();
            EXPECT_TRUE(roundsTo(height * 3 * (index + 1) / 16, button.y())) << button.y();
            EXPECT_TRUE(roundsTo(width - 400, button.width())) << button.width();
            EXPECT_TRUE(roundsTo(height * 3 / 16 - 200, button.height())) << button.height();
        }
        for (const char* name : {"Label1", "OrderBtn", "CloseBtn"}) {
            EXPECT_TRUE(main->rect().contains(Control(main.Get(), name)->geometry())) << name;
        }
    }
    main->Unload();
}

TEST_F(FrmMainDemoTest, CaptionsStandAsStatedWithTheirLineBreaks) {
    const auto main = MakeObject<FrmMainDemo>();
    main->Load();
    const auto caption = [&](int index) {
        return Control<QPushButton>(main.Get(), "Command1", index)->text();
    };
    EXPECT_EQ(main->Caption(), u"Zorvane - Class Code Generator Demonstration");
    EXPECT_EQ(caption(0),
              "Demonstrates use of Zorvane to store and sort multiple items of data using a single "
              "common Key.");
    EXPECT_EQ(caption(1),
              "\r\nComparison of Vesk5/6 Code for Zorvane ZVKeyList and ZVCollection Classes "
              "compared to standard Collection and Dictionary Objects. The timings are approximate "
              "and will vary from system to system.");
    EXPECT_EQ(caption(2),
              "\r\nDemonstrates use of Zorvane IZVPropertyBag Interface and ZVPropertyBag Class to "
              "Persist data to Disk.");
    const QString introduction = ToQString(Control<Label>(main.Get(), "EditLabel1")->Caption());
    EXPECT_TRUE(introduction.endsWith("Code Generated by Zorvane Code Generator ."));
    EXPECT_TRUE(introduction.contains("some of the capabilities"));
    EXPECT_TRUE(ToQString(Control<Label>(main.Get(), "Label1")->Caption()).startsWith("\r\n"));
    main->Unload();
}

TEST_F(FrmMainDemoTest, WindowsNestThreeDeepAndTheOuterOnesWait) {
    const auto main = MakeObject<FrmMainDemo>();
    WhenModal<frmOrder> order([&](frmOrder& window) {
        EXPECT_EQ(window.windowHandle()->transientParent()->objectName(), "frmDemo0Window");
        Click(Control(main.Get(), "CloseBtn"));
        EXPECT_TRUE(window.isVisible()) << "a click below a modal window goes nowhere";
        EXPECT_TRUE(main->isVisible());
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
    WhenModal<FrmMainDemo> top([&](FrmMainDemo& window) {
        Click(Control(&window, "Command1", 0));
        EXPECT_TRUE(demo.Done());
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass) << "nobody has set it back";
        window.Unload();
    });
    main->ShowModal();
}

TEST_F(FrmMainDemoTest, EveryIndexButOneAndTwoOpensTheKeyList) {
    const auto main = MakeObject<FrmMainDemo>();
    ASSERT_TRUE(Shown(*main));
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}}) {
        WhenModal<frmDemo0> demo([](frmDemo0& window) { window.CloseBtn_Click(); });
        main->Command1_Click(index);
        EXPECT_TRUE(demo.Done()) << index;
    }
    main->Unload();
}

TEST_F(FrmMainDemoTest, OrderIsReachedFromMainAndFromTheClosingWindow) {
    int orders = 0;
    const auto main = MakeObject<FrmMainDemo>();
    ASSERT_TRUE(Shown(*main));
    {
        WhenModal<frmOrder> order([&](frmOrder& window) {
            ++orders;
            window.CancelBtn_Click();
        });
        QTest::keyClick(main.Get(), Qt::Key_O, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return order.Done(); }));
    }
    WhenModal<FrmThank> thank([&](FrmThank& window) {
        WhenModal<frmOrder> order([&](frmOrder& form) {
            ++orders;
            form.CancelBtn_Click();
        });
        Click(Control(&window, "OrderBtn"));
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    main->CloseBtn_Click();
    EXPECT_EQ(orders, 2);
    EXPECT_FALSE(main->Loaded());
}

TEST_F(FrmMainDemoTest, EscapeDoesNotEndTheProgramAndTabWalksInReadingOrder) {
    const auto main = MakeObject<FrmMainDemo>();
    ASSERT_TRUE(Shown(*main));
    QTest::keyClick(main.Get(), Qt::Key_Escape);
    EXPECT_TRUE(main->isVisible());
    int lastTop = -1;
    for (int step = 0; step < 5; ++step) {
        QWidget* focus = main->focusWidget();
        ASSERT_NE(focus, nullptr);
        EXPECT_GT(focus->y(), lastTop) << focus->objectName().toStdString();
        lastTop = focus->y();
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    main->Unload();
}

}  // namespace
}  // namespace zorvane::test
