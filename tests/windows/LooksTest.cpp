// What can be said about looks without comparing a pixel, in light and dark, at every scale.
#include <set>

#include "program/app/FrmMainDemo.h"
#include "program/app/FrmThank.h"
#include "program/app/frmOrder.h"
#include "program/app/frmOrderSummary.h"
#include "program/app/frmSplash.h"
#include "program/demos/FrmDemo1.h"
#include "program/demos/PropBagSession.h"
#include "program/demos/frmDemo0.h"
#include "program/demos/frmDemo2.h"
#include "program/demos/frmKept.h"
#include "program/forms/Colour.h"
#include "program/forms/FitText.h"
#include "program/forms/Strings.h"
#include "program/forms/WrapButton.h"
#include "tests/windows/AnsweringDialogs.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

struct Window {
    const char* What;
    Ref<Form> (*Make)();
};

// Out of line: g++ 12, inlining a window's destruction, warns of classes that no window is.
template <class T, class... Arguments>
[[gnu::noinline]] Ref<T> Made(Arguments&... arguments) {
    return MakeObject<T>(arguments...);
}

template <class T>
Ref<Form> Plain() {
    return Made<T>();
}

Ref<Form> Splash(const char16_t* shown) {
    const auto made = Made<frmSplash>();
    made->SetProgressBarText(u"Reading the classes of the project");
    made->Set(shown, true);
    return made;
}

Ref<Form> Summary() {
    Order order;
    order.Answers.fill(u"An answer of some length");
    return Made<frmOrderSummary>(order);
}

Ref<Form> PropertyBag() {
    static PropBagSession session;
    return Made<frmDemo2>(session);
}

Ref<Form> Kept() {
    ZVPropertyBag bag;
    bag.WriteProperty(u"Font", MakeObject<Font>(ProgramFont()));
    return Made<frmKept>(bag);
}

constexpr Window kEveryWindow[] = {
    {"frmSplash", [] { return Splash(u"CloseVisible"); }},
    {"frmSplashProgress", [] { return Splash(u"ProgressBarVisible"); }},
    {"FrmMainDemo", Plain<FrmMainDemo>},
    {"FrmThank", Plain<FrmThank>},
    {"frmOrder", Plain<frmOrder>},
    {"frmOrderSummary", Summary},
    {"frmDemo0", Plain<frmDemo0>},
    {"frmDemo2", PropertyBag},
    {"frmKept", Kept},
    {"FrmDemo1", Plain<FrmDemo1>}};

// Catches what a closed window leaves behind for the next, or the sanitizers find it.
TEST(EveryWindowTest, OpensAndClosesAgainAndAgain) {
    const AnsweringDialogs dialogs;
    const auto before = QApplication::allWidgets().size();
    for (const Window& window : kEveryWindow) {
        for (int cycle = 0; cycle < 200; ++cycle) {
            const Ref<Form> form = window.Make();
            form->show();
            QCoreApplication::processEvents();
            form->Unload();
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::allWidgets().size() == before; }))
            << window.What << " leaves a part of it";
    }
}

class Looks : public ShownWindowTest<Form>, public testing::WithParamInterface<Window> {
  protected:
    Looks() : ShownWindowTest(GetParam().Make()) {}
    AnsweringDialogs dialogs_;
    // The controls a person sees, without the parts that the toolkit builds into them.
    [[nodiscard]] std::vector<QWidget*> SeenControls() const {
        std::vector<QWidget*> controls;
        for (QWidget* child : window_->findChildren<QWidget*>()) {
            const QString name = child->objectName();
            const bool part = name.startsWith("qt_") || name.isEmpty();
            if (child->isVisible() && !part) controls.push_back(child);
        }
        return controls;
    }
};

// A text that does not fit is cut off without a word.
void ExpectRoomForTheText(const QWidget* control) {
    if (const auto* wrap = dynamic_cast<const WrapButton*>(control)) {
        const QSize room = wrap->size() - QSize(24, 8);
        const QString caption = ForDisplay(wrap->text());
        const QFont shown = FittingFont(wrap->font(), caption, room);
        EXPECT_GE(shown.pointSizeF(), 9) << "as it is painted";
        EXPECT_LE(WrappedSize(shown, caption, room.width()).height(), room.height());
    } else if (const auto* button = qobject_cast<const QPushButton*>(control)) {
        EXPECT_EQ(button->size().expandedTo(button->minimumSizeHint()), button->size());
    } else if (const auto* label = qobject_cast<const QLabel*>(control)) {
        const QSize taken = WrappedSize(label->font(), label->text(), label->width());
        EXPECT_EQ(label->size().expandedTo(taken), label->size());
    } else if (const auto* box = qobject_cast<const QLineEdit*>(control)) {
        const QFontMetrics metrics(box->font());
        EXPECT_LE(metrics.horizontalAdvance(box->placeholderText()), box->width() - 12);
        EXPECT_GE(box->height(), metrics.height());
    }
}

TEST_P(Looks, NothingIsCutOffLiesOutsideOrOnAnother) {
    EXPECT_TRUE(window_->screen()->availableGeometry().contains(window_->frameGeometry()));
    for (const QSize size : {window_->size(), window_->minimumSize()}) {
        window_->resize(size.expandedTo(QSize(1, 1)));
        QTest::qWait(1);
        const auto controls = SeenControls();
        for (const QWidget* control : controls) {
            SCOPED_TRACE(control->objectName().toStdString());
            for (const QWidget* other : controls) {
                if (other == control || other->parentWidget() != control->parentWidget()) continue;
                EXPECT_FALSE(control->geometry().intersects(other->geometry()))
                    << "lies on " << other->objectName().toStdString();
            }
            // What is scrolled may be larger than the part that is seen.
            if (!qobject_cast<QScrollArea*>(control->parentWidget()->parentWidget())) {
                EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()));
            }
            ExpectRoomForTheText(control);
        }
    }
}

TEST_P(Looks, EveryControlCanBeNamedByAScreenReaderAndReachedByKeys) {
    const auto* spoken = QAccessible::queryAccessibleInterface(window_.Get());
    EXPECT_TRUE(spoken->role() == QAccessible::Window || spoken->role() == QAccessible::Dialog);
    EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty());
    std::set<QWidget*> unreached;
    for (QWidget* control : SeenControls()) {
        const QString called = control->objectName();
        if (control->focusPolicy() & Qt::TabFocus) unreached.insert(control);
        if (called == "fraMainFrame" || called == "lblStatus") continue;  // they say nothing yet
        spoken = QAccessible::queryAccessibleInterface(control);
        const QString name = spoken ? spoken->text(QAccessible::Name) : QString();
        EXPECT_FALSE(name.trimmed().isEmpty()) << called.toStdString();
        EXPECT_FALSE(name.contains('\r') || name.contains('&')) << name.toStdString();
    }
    for (int step = 0; step < 40 && window_->focusWidget(); ++step) {
        unreached.erase(window_->focusWidget());
        QTest::keyClick(window_->focusWidget(), Qt::Key_Tab);
    }
    for (const QWidget* missed : unreached) ADD_FAILURE() << missed->objectName().toStdString();
}

TEST_P(Looks, NoTwoControlsShareAMnemonic) {
    QStringList taken;
    for (QWidget* control : window_->findChildren<QWidget*>()) {
        const auto* button = qobject_cast<QAbstractButton*>(control);
        const auto* label = qobject_cast<QLabel*>(control);
        const QString caption = button                    ? button->text()
                                : label && label->buddy() ? label->text()
                                                          : QString();
        const QString key = QKeySequence::mnemonic(caption).toString();
        EXPECT_FALSE(taken.contains(key)) << caption.toStdString();
        if (!key.isEmpty()) taken << key;
    }
}

TEST_P(Looks, TextIsLegibleInADarkPalette) {
    QPalette dark(QColor(42, 46, 50));
    dark.setColor(QPalette::PlaceholderText, Qt::black);  // as some dark palettes leave it
    QApplication::setPalette(dark);
    QCoreApplication::sendPostedEvents();
    for (const QWidget* control : SeenControls()) {
        SCOPED_TRACE(control->objectName().toStdString());
        const QPalette palette = control->palette();
        const QColor text = palette.color(control->foregroundRole());
        EXPECT_GE(Contrast(text, palette.color(control->backgroundRole())), 4.5);
        const auto* box = qobject_cast<const QLineEdit*>(control);
        if (!box || box->placeholderText().isEmpty()) continue;
        const QColor hint = palette.color(QPalette::PlaceholderText);
        EXPECT_EQ(hint.rgb(), palette.color(QPalette::Text).rgb()) << "a hint of another colour";
        EXPECT_GT(hint.alpha(), 127);
    }
    QApplication::setPalette(QPalette());
}

TEST_P(Looks, EscapeClosesAWindowThatHasAButtonForItAndNeverTheProgram) {
    const QStringList staying{"frmSplashProgress", "FrmMainDemo"};
    QWidget* focus = window_->focusWidget();
    QTest::keyClick(focus ? focus : window_.Get(), Qt::Key_Escape);
    EXPECT_EQ(window_->isVisible(), staying.contains(GetParam().What));
}

INSTANTIATE_TEST_SUITE_P(Every, Looks, testing::ValuesIn(kEveryWindow),
                         [](const auto& one) { return one.param.What; });

}  // namespace
}  // namespace zorvane::test
