// Frames: the same eight numbers after any number of openings, whatever the window manager adds.

#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

class FramesTest : public PropBagTest {
  protected:
    // The words under which window 1 is kept: all eight properties at once.
    Variant Stored() { return session_.Bag().Item(u"DemoZVPropertyBag1"); }
};

TEST_F(FramesTest, TwentyReopeningsBringTheSameEightNumbers) {
    auto window = Open();
    window->move(QPoint(203, 151));  // as a person drags it
    window->resize(517, 393);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == QSize(517, 393); }));
    QTest::qWait(50);
    Close(window);
    const Variant stored = Stored();
    QRect frame;
    for (int cycle = 1; cycle <= 20; ++cycle) {
        session_ = PropBagSession();
        window = Open();
        if (cycle == 1) frame = window->frameGeometry();
        EXPECT_EQ(window->frameGeometry(), frame) << "cycle " << cycle;
        EXPECT_EQ(window->size(), QSize(517, 393)) << "cycle " << cycle;
        Close(window);
        ASSERT_TRUE(Stored() == stored) << "cycle " << cycle;
    }
}

TEST_F(FramesTest, EachMoveIsFoundAgainExactly) {
    for (int cycle = 0; cycle < 20; ++cycle) {
        auto window = Open();
        window->move(QPoint(20 + 9 * cycle, 15 + 8 * cycle));
        window->resize(400 + 11 * cycle, 300 + 7 * cycle);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return window->size() == QSize(400 + 11 * cycle, 300 + 7 * cycle); }));
        QTest::qWait(20);
        const QRect frame = window->frameGeometry();
        Close(window);
        const Variant stored = Stored();
        window = Open();
        EXPECT_EQ(window->frameGeometry(), frame) << "cycle " << cycle;
        Close(window);
        EXPECT_TRUE(Stored() == stored) << "cycle " << cycle;
    }
}

TEST_F(FramesTest, AWindowOfAMonitorThatIsGoneIsSeenAndKeepsItsPlace) {
    auto window = Open();
    window->SetLeft(90000);
    window->SetTop(-30000);
    Close(window);
    const Variant stored = Stored();
    window = Open();
    const QRect title(window->frameGeometry().topLeft(), QSize(window->width(), 24));
    const QRect seen = title & window->screen()->availableGeometry();
    EXPECT_GE(seen.width(), 64);
    EXPECT_GE(seen.height(), 16);
    Close(window);
    EXPECT_TRUE(Stored() == stored) << "the monitor may be back tomorrow";
}

TEST_F(FramesTest, AMaximisedWindowComesBackAtItsOrdinarySize) {
    auto window = Open();
    const TwipRect before{window->Left(), window->Top(), window->Width(), window->Height()};
    window->showMaximized();
    QTest::qWait(100);
    Close(window);
    window = Open();
    EXPECT_NEAR(window->Width(), before.Width, 15 * 12);
    EXPECT_NEAR(window->Height(), before.Height, 15 * 40);
    Close(window);
}

}  // namespace
}  // namespace zorvane::test
