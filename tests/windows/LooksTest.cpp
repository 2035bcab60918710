// What can be said about looks without comparing a pixel, in light and dark, at every scale.
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <set>

#include "app/FrmMainDemo.h"
#include "app/FrmThank.h"
#include "app/frmOrder.h"
#include "app/frmOrderSummary.h"
#include "app/frmSplash.h"
#include "demos/FrmDemo1.h"
#include "demos/PropBagSession.h"
#include "demos/frmDemo0.h"
#include "demos/frmDemo2.h"
#include "forms/Colour.h"
#include "forms/FitText.h"
#include "forms/Strings.h"
#include "forms/WrapButton.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

struct Window {
    const char* What;
    std::function<Ref<Form>()> Make;
    friend std::ostream& operator<<(std::ostream& out, const Window& one) {
        return out << one.What;
    }
};

// Out of line: g++ 12, inlining a window's destruction, warns of classes that no window is.
template <class T, class... Arguments>
[[gnu::noinline]] Ref<T> Made(Arguments&... arguments) {
    return MakeObject<T>(arguments...);
}

template <class T, class... Arguments>
std::function<Ref<Form>()> Plain(Arguments&... arguments) {
    return [&arguments...]() -> Ref<Form> { return Made<T>(arguments...); };
}

std::vector<Window> EveryWindow() {
    static PropBagSession session;
    static Order order;
    order.Answers.fill(u"An answer of some length");
    const auto splash = [](const char16_t* shown) {
        return [shown]() -> Ref<Form> {
            const auto made = Made<frmSplash>();
            made->SetProgressBarText(u"Reading the classes of the project");
            made->Set(shown, true);
            return made;
        };
    };
    return {{"frmSplash", splash(u"CloseVisible")},
            {"frmSplashProgress", splash(u"ProgressBarVisible")},
            {"FrmMainDemo", Plain<FrmMainDemo>()},
            {"FrmThank", Plain<FrmThank>()},
            {"frmOrder", Plain<frmOrder>()},
            {"frmOrderSummary", Plain<frmOrderSummary>(order)},
            {"frmDemo0", Plain<frmDemo0>()},
            {"frmDemo2", Plain<frmDemo2>(session)},
            {"FrmDemo1", Plain<FrmDemo1>()}};
}

// The controls a person sees, without the parts that the toolkit builds into them.
std::vector<QWidget*> SeenControls(const Form& form) {
    std::vector<QWidget*> controls;
    for (QWidget* child : form.findChildren<QWidget*>()) {
        const bool part = child->objectName().startsWith("qt_") || child->objectName().isEmpty();
        if (child->isVisible() && !part) controls.push_back(child);
    }
    return controls;
}

class Looks : public WindowTest, public testing::WithParamInterface<Window> {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        form_ = GetParam().Make();
        ASSERT_TRUE(Shown(*form_));
    }
    void TearDown() override {
        form_->Unload();
        form_ = nullptr;
        QApplication::setPalette(QPalette());
        WindowTest::TearDown();
    }

    Ref<Form> form_;
};

// Catches what a closed window leaves behind for the next, or the sanitizers find it.
TEST(EveryWindowTest, OpensAndClosesAgainAndAgain) {
    const auto before = QApplication::allWidgets().size();
    for (const Window& window : EveryWindow()) {
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

TEST_P(Looks, EveryControlCanBeNamedByAScreenReader) {
    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(form_.Get());
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->role() == QAccessible::Window || window->role() == QAccessible::Dialog);
    EXPECT_FALSE(window->text(QAccessible::Name).isEmpty());
    int named = 0;
    for (QWidget* control : SeenControls(*form_)) {
        if (control->objectName() == "fraMainFrame") continue;  // holds, says nothing
        const auto* spoken = QAccessible::queryAccessibleInterface(control);
        SCOPED_TRACE(control->objectName().toStdString());
        ASSERT_NE(spoken, nullptr);
        const QString name = spoken->text(QAccessible::Name);
        EXPECT_TRUE(!name.trimmed().isEmpty() || control->objectName() == "lblStatus");
        EXPECT_FALSE(name.contains('\r') || name.contains('&'));
        ++named;
    }
    EXPECT_GT(named, 3);
}

TEST_P(Looks, NothingIsCutOffLiesOutsideOrOnAnother) {
    EXPECT_TRUE(form_->screen()->availableGeometry().contains(form_->frameGeometry()));
    for (const QSize size : {form_->size(), form_->minimumSize()}) {
        form_->resize(size.expandedTo(QSize(1, 1)));
        QTest::qWait(1);
        const auto controls = SeenControls(*form_);
        for (QWidget* control : controls) {
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
            if (const auto* wrap = dynamic_cast<WrapButton*>(control)) {
                const QSize room = wrap->size() - QSize(24, 8);
                const QString caption = ForDisplay(wrap->text());
                const QFont shown = FittingFont(wrap->font(), caption, room);
                EXPECT_GE(shown.pointSizeF(), 9) << "as it is painted";
                EXPECT_LE(WrappedSize(shown, caption, room.width()).height(), room.height());
            } else if (auto* button = qobject_cast<QPushButton*>(control)) {
                EXPECT_GE(button->width(), button->minimumSizeHint().width());
                EXPECT_GE(button->height(), button->minimumSizeHint().height());
            } else if (auto* label = qobject_cast<QLabel*>(control)) {
                const QSize taken = WrappedSize(label->font(), label->text(), label->width());
                EXPECT_LE(taken.width(), label->width());
                EXPECT_LE(taken.height(), label->height());
            } else if (auto* box = qobject_cast<QLineEdit*>(control)) {
                const QFontMetrics metrics(box->font());
                EXPECT_LE(metrics.horizontalAdvance(box->placeholderText()), box->width() - 12);
                EXPECT_GE(box->height(), metrics.height());
            }
        }
    }
}

TEST_P(Looks, NoTwoControlsShareAMnemonic) {
    QStringList taken;
    for (QWidget* control : form_->findChildren<QWidget*>()) {
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

TEST_P(Looks, TabReachesEveryControlThatTakesInput) {
    std::set<QWidget*> wanted;
    for (QWidget* control : SeenControls(*form_)) {
        if (control->focusPolicy() & Qt::TabFocus && control->isEnabled()) wanted.insert(control);
    }
    for (int step = 0; step < 40 && !wanted.empty(); ++step) {
        QWidget* focus = form_->focusWidget();
        if (!focus) break;
        wanted.erase(focus);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    for (const QWidget* missed : wanted) ADD_FAILURE() << missed->objectName().toStdString();
}

TEST_P(Looks, TextIsLegibleInADarkPalette) {
    QPalette dark(QColor(42, 46, 50));
    dark.setColor(QPalette::PlaceholderText, Qt::black);  // as some dark palettes leave it
    QApplication::setPalette(dark);
    QCoreApplication::sendPostedEvents();
    for (QWidget* control : SeenControls(*form_)) {
        const QPalette palette = control->palette();
        EXPECT_GE(Contrast(palette.color(control->foregroundRole()),
                           palette.color(control->backgroundRole())),
                  4.5)
            << control->objectName().toStdString();
        const auto* box = qobject_cast<QLineEdit*>(control);
        if (!box || box->placeholderText().isEmpty()) continue;
        const QColor hint = palette.color(QPalette::PlaceholderText);
        EXPECT_EQ(hint.rgb(), palette.color(QPalette::Text).rgb()) << "a hint of another colour";
        EXPECT_GT(hint.alpha(), 127);
    }
}

INSTANTIATE_TEST_SUITE_P(Every, Looks, testing::ValuesIn(EveryWindow()),
                         [](const auto& one) { return one.param.What; });

}  // namespace
}  // namespace zorvane::test
