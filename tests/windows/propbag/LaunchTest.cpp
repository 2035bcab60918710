// The launch from the main window: one load before, one save after.

#include <QFile>

#include "app/FrmMainDemo.h"
#include "app/modStartUp.h"
#include "runtime/FileWords.h"
#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

class LaunchTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        QFile::remove(path_);
        ASSERT_TRUE(Shown(*main_));
    }
    void TearDown() override {
        main_->Unload();
        QFile::remove(path_);
        WindowTest::TearDown();
    }
    void Open(std::function<void(frmDemo2&)> act) {
        WhenModal<frmDemo2> demo([&](frmDemo2& window) {
            act(window);
            window.Unload();
        });
        for (QWidget* button : main_->findChildren<QWidget*>(QStringLiteral("Command1"))) {
            if (button->property("Index") == 2) Click(button);
        }
        EXPECT_TRUE(demo.Done());
    }

    QString path_ = ToQString(modStartUp::BagFile());
    Ref<FrmMainDemo> main_ = MakeObject<FrmMainDemo>();
};

TEST_F(LaunchTest, TheFirstRunMakesTheFile) {
    Open([&](frmDemo2& window) {
        EXPECT_EQ(window.Number(), 1);
        EXPECT_FALSE(QFile::exists(path_)) << "nothing is written before the window closes";
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    });
    EXPECT_TRUE(QFile::exists(path_));
    EXPECT_EQ(modStartUp::BagSession().Counter, 0);
    EXPECT_TRUE(QFileInfo(path_).absolutePath() == QCoreApplication::applicationDirPath());
}

TEST_F(LaunchTest, TheSecondOpeningReadsTheFileAgain) {
    Open([](frmDemo2& window) { window.SetCaption(u"Saved"); });
    Open([](frmDemo2& window) {
        EXPECT_EQ(window.Caption(), Text(u"Saved"));
        window.SetCaption(u"Saved again");
    });
    QFile::remove(path_);
    Open([](frmDemo2& window) {
        EXPECT_NE(window.Caption(), Text(u"Saved again")) << "the file, not the bag in memory";
    });
}

TEST_F(LaunchTest, OpenWindowsOfHigherNumbersAreStoredToo) {
    Open([](frmDemo2& window) {
        Click(Control(&window, "cmdShowNext"));
        for (QWidget* top : QApplication::topLevelWidgets()) {
            auto* next = qobject_cast<frmDemo2*>(top);
            if (next && next->Number() == 2) next->SetCaption(u"Second");
        }
    });
    ZVPropertyBag bag;
    bag.SetContents(modZorvane::ReadFileWords(modStartUp::BagFile()));
    EXPECT_EQ(bag.Count(), 2);
    EXPECT_EQ(bag.Key(2), Text(u"DemoZVPropertyBag2"));
    Open([](frmDemo2& window) {
        EXPECT_EQ(window.Number(), 1) << "numbering starts anew";
        Click(Control(&window, "cmdShowNext"));
        QWidget* next = QApplication::activeWindow();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            next = QApplication::activeWindow();
            return next && next->windowTitle() == "Second";
        }));
    });
}

}  // namespace
}  // namespace zorvane::test
