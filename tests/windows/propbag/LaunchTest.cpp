// The launch from the main window: one load before, one save after.

#include <QFile>

#include "app/modStartUp.h"
#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

class LaunchTest : public PropBagTest {
  protected:
    void SetUp() override {
        PropBagTest::SetUp();
        QFile::remove(path_);
        OpenMain();
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
        EXPECT_TRUE(QFile::exists(path_));
    }

    QString path_ = QCoreApplication::applicationDirPath() + "/PropBag.dat";
};

TEST_F(LaunchTest, EveryOpeningReadsTheFileThatTheOneBeforeHasWritten) {
    Launch([&](frmDemo2& window) {
        EXPECT_FALSE(QFile::exists(path_)) << "nothing is written before the window closes";
        window.SetCaption(u"Saved");
        Next(&window, 2)->SetCaption(u"Second");
    });
    Launch([](frmDemo2& window) {
        EXPECT_EQ(window.Number(), 1) << "numbering starts anew";
        EXPECT_EQ(window.Caption(), Text(u"Saved"));
        EXPECT_EQ(Next(&window, 2)->Caption(), Text(u"Second"));
    });
    QFile::remove(path_);
    Launch([](frmDemo2& window) {
        EXPECT_NE(window.Caption(), Text(u"Saved")) << "the file, not the bag in memory";
    });
}

}  // namespace
}  // namespace zorvane::test
