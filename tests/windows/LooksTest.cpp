// What can be said about looks without comparing a pixel: every control has a name that a screen
// reader can say, nothing is cut off, nothing lies outside, no two mnemonics fight, in light and
// dark, at every scale.
#include <QAccessible>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
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

Order SomeOrder() {
    Order order;
    order.Answers.fill(u"An answer of some length");
    return order;
}

const std::vector<Window>& EveryWindow() {
    static const std::vector<Window> windows{
        {"frmSplash",
         [] {
             auto splash = MakeObject<frmSplash>();
             splash->SetCloseVisible(true);
             return Ref<Form>(splash);
         }},
        {"frmSplashProgress",
         [] {
             auto splash = MakeObject<frmSplash>();
             splash->SetProgressBarVisible(true);
             splash->SetProgressBarText(u"Reading the classes of the project");
             return Ref<Form>(splash);
         }},
        {"FrmMainDemo", [] { return Ref<Form>(MakeObject<FrmMainDemo>()); }},
        {"FrmThank", [] { return Ref<Form>(MakeObject<FrmThank>()); }},
        {"frmOrder", [] { return Ref<Form>(MakeObject<frmOrder>()); }},
        {"frmOrderSummary", [] { return Ref<Form>(MakeObject<frmOrderSummary>(SomeOrder())); }},
        {"frmDemo0", [] { return Ref<Form>(MakeObject<frmDemo0>()); }},
        {"frmDemo2",
         [] {
             static PropBagSession session;
             return Ref<Form>(MakeObject<frmDemo2>(session));
         }},
        {"FrmDemo1", [] { return Ref<Form>(MakeObject<FrmDemo1>()); }},
    };
    return windows;
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

TEST_P(Looks, EveryControlCanBeNamedByAScreenReader) {
    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(form_.Get());
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->role() == QAccessible::Window || window->role() == QAccessible::Dialog);
    EXPECT_FALSE(window->text(QAccessible::Name).isEmpty());
    int named = 0;
    for (QWidget* control : SeenControls(*form_)) {
        if (control->objectName() == "fraMainFrame") continue;  // holds, says nothing
        const auto* spoken = QAccessible::queryAccessibleInterface(control);
        ASSERT_NE(spoken, nullptr) << control->objectName().toStdString();
        const QString name = spoken->text(QAccessible::Name);
        EXPECT_TRUE(!name.trimmed().isEmpty() || control->objectName() == "lblStatus")
            << control->objectName().toStdString();
        EXPECT_FALSE(name.contains('\r') || name.contains('&'))
            << control->objectName().toStdString();
        ++named;
    }
    EXPECT_GT(named, 3);
}

TEST_P(Looks, NothingIsCutOffAndNothingLiesOutsideItsWindow) {
    std::vector<QSize> sizes{form_->size(), form_->minimumSize()};
    for (const QSize size : sizes) {
        form_->resize(size.expandedTo(QSize(1, 1)));
        QTest::qWait(1);
        for (QWidget* control : SeenControls(*form_)) {
            SCOPED_TRACE(control->objectName().toStdString());
            // What is scrolled may be larger than the part that is seen.
            if (!qobject_cast<QScrollArea*>(control->parentWidget()->parentWidget())) {
                EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()));
            }
            if (const auto* wrap = dynamic_cast<WrapButton*>(control)) {
                const QSize room = wrap->size() - QSize(24, 8);
                const QSize taken =
                    WrappedSize(wrap->font(), ForDisplay(wrap->text()), room.width());
                EXPECT_LE(taken.height(), room.height());
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

TEST_P(Looks, ControlsDoNotLieOnOneAnother) {
    const auto controls = SeenControls(*form_);
    for (const QWidget* one : controls) {
        for (const QWidget* other : controls) {
            if (one >= other || one->parentWidget() != other->parentWidget()) continue;
            EXPECT_FALSE(one->geometry().intersects(other->geometry()))
                << one->objectName().toStdString() << " and " << other->objectName().toStdString();
        }
    }
}

TEST_P(Looks, NoTwoControlsShareAMnemonic) {
    std::set<QString> taken;
    const auto note = [&](const QString& caption) {
        const QKeySequence key = QKeySequence::mnemonic(caption);
        if (key.isEmpty()) return;
        EXPECT_TRUE(taken.insert(key.toString()).second) << caption.toStdString();
    };
    for (QWidget* control : form_->findChildren<QWidget*>()) {
        if (const auto* button = qobject_cast<QAbstractButton*>(control)) note(button->text());
        const auto* label = qobject_cast<QLabel*>(control);
        if (label && label->buddy()) note(label->text());
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
    QPalette dark;
    for (const auto& [role, colour] : {std::pair{QPalette::Window, QColor(42, 46, 50)},
                                       {QPalette::WindowText, QColor(252, 252, 252)},
                                       {QPalette::Base, QColor(27, 30, 32)},
                                       {QPalette::Text, QColor(252, 252, 252)},
                                       {QPalette::Button, QColor(49, 54, 59)},
                                       {QPalette::ButtonText, QColor(252, 252, 252)}}) {
        dark.setColor(role, colour);
    }
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
