#include <QProgressBar>

#include "app/Version.h"
#include "app/frmSplash.h"
#include "forms/Label.h"
#include "platform/Error.h"
#include "tests/unit/Raises.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class frmSplashTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        splash_ = MakeObject<frmSplash>();
    }
    void TearDown() override {
        splash_->Unload();
        splash_ = nullptr;
        WindowTest::TearDown();
    }
    [[nodiscard]] QProgressBar* Bar() const {
        return Control<QProgressBar>(splash_.Get(), "ProgressBar1");
    }
    [[nodiscard]] bool Seen(const char* name) const {
        return !Control(splash_.Get(), name)->isHidden();
    }

    Ref<frmSplash> splash_;
};

TEST_F(frmSplashTest, LoadSetsVersionHourglassAndCloseButtonAndHidesTheProgress) {
    splash_->Load();
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
    EXPECT_EQ(Control<Label>(splash_.Get(), "lblVersion")->Caption(),
              Text(u"Version ") + ProgramVersion());
    EXPECT_FALSE(Seen("Picture1"));
    EXPECT_TRUE(Seen("Label3"));
    EXPECT_FALSE(Seen("CloseBtn"));
    const QWidget* frame = Control(splash_.Get(), "fraMainFrame");
    const QWidget* button = Control(splash_.Get(), "CloseBtn");
    EXPECT_EQ(button->x(), (frame->width() - button->width()) / 2);
    EXPECT_EQ(button->y(), frame->height() - button->height() - 3) << "50 twips are 3.3 pixels";
}

TEST_F(frmSplashTest, KeptEitherVisibilitySetsItsPointerAlsoWhenHiding) {
    for (const bool value : {true, false, true}) {
        SCOPED_TRACE(value);
        Control(splash_.Get(), "CloseBtn")->setEnabled(false);
        splash_->Set(u"closevisible", value);
        EXPECT_TRUE(splash_->Loaded()) << "the first use of the window loads it";
        EXPECT_EQ(Seen("CloseBtn"), value);
        EXPECT_TRUE(Control(splash_.Get(), "CloseBtn")->isEnabled());
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Arrow);
        splash_->SetProgressBarVisible(value);
        EXPECT_EQ(Seen("Picture1"), value);
        EXPECT_FALSE(Seen("CloseBtn"));
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
    }
}

TEST_F(frmSplashTest, KeptProgressBarMaxBelowTwoBecomesTwoInTheCallersVariable) {
    for (const auto& [given, becomes] :
         {std::pair{0, 2}, {1, 2}, {-7, 2}, {2, 2}, {3, 3}, {2147483647, 2147483647}}) {
        std::int32_t value = given;
        splash_->SetProgressBarMax(value);
        EXPECT_EQ(value, becomes) << given;
        EXPECT_EQ(Bar()->maximum(), becomes) << given;
        EXPECT_EQ(Bar()->minimum(), 1) << given;
    }
}

TEST_F(frmSplashTest, ProgressBarStatusOutsideTheRangeRaisesAndChangesNothing) {
    std::int32_t highest = 10;
    splash_->SetProgressBarMax(highest);
    for (const std::int32_t inside : {1, 10, 4}) {
        splash_->SetProgressBarStatus(inside);
        EXPECT_EQ(Bar()->value(), inside);
    }
    for (const std::int32_t outside : {0, 11, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(NumberRaisedBy([&] { splash_->SetProgressBarStatus(outside); }), 380);
        EXPECT_EQ(Bar()->value(), 4) << outside;
    }
}

TEST_F(frmSplashTest, EveryPropertyCanBeAssignedByNameAndNoOther) {
    splash_->Set(u"ProgressBarMax", std::int32_t{40});
    splash_->Set(u"PROGRESSBARSTATUS", std::int32_t{30});
    splash_->Set(u"ProgressBarText", u"Reading");
    splash_->Set(u"ProgressBarVisible", true);
    EXPECT_EQ(Bar()->value(), 30);
    EXPECT_EQ(Control<Label>(splash_.Get(), "Label3")->Caption(), u"Reading");
    EXPECT_TRUE(Seen("Picture1"));
    for (const char16_t* name : {u"CloseVisibl", u"", u"ScaleWidth"}) {
        EXPECT_THROW(splash_->Set(name, true), Error) << Text(name);
    }
    EXPECT_THROW(std::ignore = splash_->Get(u"CloseVisible"), Error) << "it cannot be read back";
}

TEST_F(frmSplashTest, ClosingLeavesTheArrowWhateverTheWay) {
    for (const auto& close : std::vector<std::function<void(frmSplash&)>>{
             [](frmSplash& window) { Click(Control(&window, "CloseBtn")); },
             [](frmSplash& window) { QTest::keyClick(&window, Qt::Key_Escape); },
             [](frmSplash& window) { QTest::keyClick(&window, Qt::Key_Return); },
             [](frmSplash& window) { window.close(); }}) {
        splash_ = MakeObject<frmSplash>();
        splash_->SetCloseVisible(true);
        WhenModal<frmSplash> driver([&](frmSplash& window) {
            Screen::The().SetMousePointer(Pointer::Hourglass);
            close(window);
        });
        splash_->ShowModal();
        EXPECT_FALSE(splash_->Loaded());
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Arrow);
    }
}

TEST_F(frmSplashTest, EscapeAndEnterAreHarmlessWhileThereIsNoCloseButton) {
    splash_->SetProgressBarVisible(true);
    ASSERT_TRUE(Shown(*splash_));
    QTest::keyClick(splash_.Get(), Qt::Key_Escape);
    QTest::keyClick(splash_.Get(), Qt::Key_Return);
    EXPECT_TRUE(splash_->isVisible());
}

}  // namespace
}  // namespace zorvane::test
