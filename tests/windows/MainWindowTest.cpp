#include "program/app/FrmMainDemo.h"
#include "program/demos/frmDemo0.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class FrmMainDemoTest : public ShownWindowTest<FrmMainDemo> {};

TEST_F(FrmMainDemoTest, KeptOnlyTheSecondAndThirdCaptionsBeginWithALineBreak) {
    for (int index = 0; index < 3; ++index) {
        const QString caption = At<QPushButton>("Command1", index)->text();
        EXPECT_EQ(caption.startsWith("\r\n"), index > 0) << index;
    }
}

TEST_F(FrmMainDemoTest, KeptEveryIndexButOneAndTwoOpensTheKeyListAndThePointerStaysAnHourglass) {
    for (const int index : {-1, 0, 3}) {
        SCOPED_TRACE(index);
        WhenModal<frmDemo0> demo([](frmDemo0& window) {
            EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass);
            window.CloseBtn_Click();
        });
        window_->Command1_Click(static_cast<std::int16_t>(index));
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Hourglass) << "nobody has set it back";
    }
}

}  // namespace
}  // namespace zorvane::test
