#include <QPushButton>

#include "app/FrmMainDemo.h"
#include "app/FrmThank.h"
#include "app/frmOrder.h"
#include "demos/frmDemo0.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class FrmMainDemoTest : public ShownWindowTest<FrmMainDemo> {};

// To the pixel, as twips.
TEST_F(FrmMainDemoTest, EachButtonTakesThreeSixteenthsOfTheInnerHeight) {
    for (const QSize pixels : {window_->minimumSize(), QSize(777, 555)}) {
        window_->resize(pixels);
        const double width = window_->ScaleWidth();
        const double step = static_cast<double>(window_->ScaleHeight()) * 3 / 16;
        for (int index = 0; index < 3; ++index) {
            const QRect at = At("Command1", index)->geometry();
            for (const auto& [twips, found] : {std::pair{200.0, at.x()},
                                               {step * (index + 1), at.y()},
                                               {width - 400, at.width()},
                                               {step - 200, at.height()}}) {
                EXPECT_LT(std::abs(twips / 15 - found), 1) << index;
            }
        }
    }
}

TEST_F(FrmMainDemoTest, KeptOnlyTheSecondAndThirdCaptionsBeginWithALineBreak) {
    for (int index = 0; index < 3; ++index) {
        const QString caption = At<QPushButton>("Command1", index)->text();
        EXPECT_EQ(caption.startsWith("\r\n"), index > 0) << index;
    }
}

TEST_F(FrmMainDemoTest, KeptEveryIndexButOneAndTwoOpensTheKeyListAndThePointerStaysAnHourglass) {
    for (const int index : {-1, 0, 3}) {
        WhenModal<frmDemo0> demo([](frmDemo0& window) {
            EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
            window.CloseBtn_Click();
        });
        window_->Command1_Click(static_cast<std::int16_t>(index));
        EXPECT_TRUE(demo.Done()) << index;
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass) << "nobody has set it back";
    }
}

TEST_F(FrmMainDemoTest, AnOrderFormOpensOverTheMainAndOverTheClosingWindowAndStopsTheirInput) {
    const auto orders = [](Form& owner) {
        WhenModal<frmOrder> order([&](frmOrder& window) {
            EXPECT_EQ(window.windowHandle()->transientParent(), owner.windowHandle());
            Click(Control(&owner, "CloseBtn"));
            EXPECT_TRUE(owner.isVisible()) << "a click below a modal window has gone through";
            window.CancelBtn_Click();
        });
        Click(Control(&owner, "OrderBtn"));
        EXPECT_TRUE(order.Done());
    };
    orders(*window_);
    WhenModal<FrmThank> thank([&](FrmThank& window) {
        orders(window);
        window.CloseBtn_Click();
    });
    Press("CloseBtn");
    EXPECT_FALSE(window_->Loaded());
}

}  // namespace
}  // namespace zorvane::test
