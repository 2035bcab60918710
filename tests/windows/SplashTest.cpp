#include "program/app/Version.h"
#include "program/app/frmSplash.h"
#include "program/forms/Label.h"
#include "tests/support/Outcome.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class frmSplashTest : public ShownWindowTest<frmSplash> {
  protected:
    [[nodiscard]] bool Seen(const char* name) const { return At(name)->isVisible(); }
    [[nodiscard]] QProgressBar* Bar() const { return At<QProgressBar>("ProgressBar1"); }
};

TEST_F(frmSplashTest, NothingCanBePressedBeforeThereIsACloseButton) {
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
    EXPECT_EQ(At<Label>("lblVersion")->Caption(), Text(u"Version ") + ProgramVersion());
    EXPECT_FALSE(Seen("Picture1") || Seen("CloseBtn"));
    QTest::keyClick(window_.Get(), Qt::Key_Return);
    EXPECT_TRUE(window_->isVisible());
    const auto fresh = MakeObject<frmSplash>();
    fresh->SetProgressBarVisible(true);
    EXPECT_TRUE(fresh->Loaded()) << "its first use loads it";
    fresh->Unload();
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Arrow);
}

TEST_F(frmSplashTest, KeptEitherVisibilitySetsItsPointerAlsoWhenHiding) {
    for (const bool value : {true, false, true}) {
        SCOPED_TRACE(value);
        At("CloseBtn")->setEnabled(false);
        window_->Set(u"closevisible", value);
        EXPECT_EQ(Seen("CloseBtn"), value);
        EXPECT_TRUE(At("CloseBtn")->isEnabled());
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Arrow);
        window_->Set(u"ProgressBarVisible", value);
        EXPECT_EQ(Seen("Picture1"), value);
        EXPECT_FALSE(Seen("CloseBtn"));
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
    }
}

TEST_F(frmSplashTest, KeptProgressBarMaxBelowTwoBecomesTwoInTheCallersVariable) {
    for (const auto& [given, becomes] : {std::pair{-7, 2}, {1, 2}, {3, 3}}) {
        std::int32_t value = given;
        window_->SetProgressBarMax(value);
        EXPECT_EQ(value, becomes) << given;
        EXPECT_EQ(Bar()->maximum(), becomes) << given;
    }
}

TEST_F(frmSplashTest, ProgressBarStatusOutsideTheRangeRaisesAndChangesNothing) {
    window_->Set(u"ProgressBarMax", std::int32_t{10});
    for (const auto& [status, shown] : {std::pair{1, 1}, {10, 10}, {4, 4}, {0, 4}, {11, 4}}) {
        const auto raised =
            NumberRaisedBy([&, to = status] { window_->Set(u"PROGRESSBARSTATUS", to); });
        EXPECT_EQ(raised, status == shown ? 0 : 380) << status;
        EXPECT_EQ(Bar()->value(), shown) << status;
    }
    window_->Set(u"ProgressBarText", u"Reading");
    EXPECT_EQ(At<Label>("Label3")->Caption(), u"Reading");
    EXPECT_EQ(NumberRaisedBy([&] { window_->Set(u"CloseVisibl", true); }), 438);
}

}  // namespace
}  // namespace zorvane::test
