// The launch from the main window: one load before, one save after.

#include <QFile>

#include "app/FrmMainDemo.h"
#include "app/modStartUp.h"
#include "runtime/FileWords.h"
#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

class LaunchTest : public PropBagTest {
  protected:
    void SetUp() override {
        PropBagTest::SetUp();
        QFile::remove(path_);
        owner_ = MakeObject<FrmMainDemo>();
        ASSERT_TRUE(Shown(*owner_));
    }
    void TearDown() override {
        QFile::remove(path_);
        PropBagTest::TearDown();
    }
    void Launch(std::function<void(frmDemo2&)> act) {
        WhenModal<frmDemo2> demo([&](frmDemo2& window) {
            act(window);
            window.Unload();
        });
        Click(Control(owner_.Get(), "Command1", 2));
        EXPECT_TRUE(demo.Done());
    }

    QString path_ = ToQString(modStartUp::BagFile());
};

TEST_F(LaunchTest, TheFirstRunMakesTheFile) {
    Launch([&](frmDemo2& window) {
        EXPECT_EQ(window.Number(), 1);
        EXPECT_FALSE(QFile::exists(path_)) << "nothing is written before the window closes";
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    });
    EXPECT_TRUE(QFile::exists(path_));
    EXPECT_EQ(modStartUp::BagSession().Counter, 0);
    EXPECT_TRUE(QFileInfo(path_).absolutePath() == QCoreApplication::applicationDirPath());
}

TEST_F(LaunchTest, TheSecondOpeningReadsTheFileAgain) {
    Launch([](frmDemo2& window) { window.SetCaption(u"Saved"); });
    Launch([](frmDemo2& window) {
        EXPECT_EQ(window.Caption(), Text(u"Saved"));
        window.SetCaption(u"Saved again");
    });
    QFile::remove(path_);
    Launch([](frmDemo2& window) {
        EXPECT_NE(window.Caption(), Text(u"Saved again")) << "the file, not the bag in memory";
    });
}

TEST_F(LaunchTest, OpenWindowsOfHigherNumbersAreStoredToo) {
    Launch([](frmDemo2& window) {
        if (frmDemo2* next = Next(&window, 2)) next->SetCaption(u"Second");
    });
    Launch([](frmDemo2& window) {
        EXPECT_EQ(window.Number(), 1) << "numbering starts anew";
        const frmDemo2* next = Next(&window, 2);
        EXPECT_TRUE(next && next->Caption() == Text(u"Second"));
    });
    ZVPropertyBag bag;
    bag.SetContents(modZorvane::ReadFileWords(modStartUp::BagFile()));
    EXPECT_EQ(bag.Count(), 2);
    EXPECT_EQ(bag.Key(2), Text(u"DemoZVPropertyBag2"));
}

}  // namespace
}  // namespace zorvane::test
