#include "program/forms/Form.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QPushButton>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "program/forms/SmallScreen.h"
#include "program/forms/Strings.h"
#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"

namespace zorvane {
namespace {

// Screen readers hear of a window or a dialog; a plain top-level widget is a nameless "filler".
QAccessibleInterface* Describe(const QString&, QObject* object) {
    auto* form = qobject_cast<Form*>(object);
    if (!form) return nullptr;
    const bool dialog = form->windowType() == Qt::Dialog;
    return new QAccessibleWidget(form, dialog ? QAccessible::Dialog : QAccessible::Window,
                                 form->windowTitle());
}

struct Member {
    std::u16string_view Name;
    Variant (*Read)(const Form&);
    void (*Assign)(Form&, const Variant&);  // null: cannot be assigned
};

constexpr Member kMembers[] = {
    {u"Caption", [](const Form& form) { return Variant(form.Caption()); },
     [](Form& form, const Variant& value) { form.SetCaption(value.ToText()); }},
    {u"Height", [](const Form& form) { return Variant(form.Height()); },
     [](Form& form, const Variant& value) { form.SetHeight(value.ToSingle()); }},
    {u"Left", [](const Form& form) { return Variant(form.Left()); },
     [](Form& form, const Variant& value) { form.SetLeft(value.ToSingle()); }},
    {u"ScaleHeight", [](const Form& form) { return Variant(form.ScaleHeight()); }, nullptr},
    {u"ScaleWidth", [](const Form& form) { return Variant(form.ScaleWidth()); }, nullptr},
    {u"Top", [](const Form& form) { return Variant(form.Top()); },
     [](Form& form, const Variant& value) { form.SetTop(value.ToSingle()); }},
    {u"Visible", [](const Form& form) { return Variant(form.isVisible()); }, nullptr},
    {u"Width", [](const Form& form) { return Variant(form.Width()); },
     [](Form& form, const Variant& value) { form.SetWidth(value.ToSingle()); }},
};

const Member* FindMember(std::u16string_view name) {
    for (const Member& member : kMembers) {
        if (EqualTexts(member.Name, name, CompareMode::Text)) return &member;
    }
    return nullptr;
}

}  // namespace

Form::Form(const char* name) {
    static const bool described = (QAccessible::installFactory(Describe), true);
    static_cast<void>(described);
    setObjectName(QLatin1String(name));
    setAttribute(Qt::WA_QuitOnClose, false);
    // Enter presses the button that has the focus: no other one looks as if it did.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (!default_ || !now || now->window() != this) return;
        default_->setDefault(now == default_ || !qobject_cast<QAbstractButton*>(now));
    });
}

Form::~Form() {
    if (modal_) modal_->quit();
    // What the controls announce while they are taken down finds no handler any more.
    for (QObject* child : findChildren<QObject*>()) child->disconnect(this);
    if (qApp) qApp->disconnect(this);
}

// A window manager lays out the whole title that it is given; with a million letters that takes it
// seconds, in which nobody's window answers.
void Form::SetCaption(const Text& caption) {
    constexpr qsizetype kLongestTitle = 1000;
    caption_ = caption;
    setWindowTitle(ToQString(caption).left(kLongestTitle));
}

void Form::Load() {
    if (loaded_) return;
    loaded_ = true;
    self_ = Ref<Form>(this);
    try {
        ensurePolished();
        Form_Load();
    } catch (...) {
        loaded_ = false;
        ReleaseWhenIdle();
        throw;
    }
}

void Form::ShowModal(Form* owner) {
    constexpr std::int32_t kOnScreenAlready = 400;
    if (modal_ || isVisible()) {
        throw Error(kOnScreenAlready, TypeName(), u"The window is on the screen already");
    }
    const Ref<Form> alive(this);
    const QPointer<Form> ownerThen(owner);
    setWindowModality(Qt::ApplicationModal);
    ShowOwned(owner);
    QEventLoop loop;
    modal_ = &loop;
    loop.exec(QEventLoop::DialogExec);
    modal_ = nullptr;
    if (isVisible()) Unload();  // the whole program is being ended
    setWindowModality(Qt::NonModal);
    if (ownerThen && ownerThen->isVisible()) ownerThen->activateWindow();
}

void Form::ShowOwned(Form* owner) {
    Load();
    if (owner && windowType() != Qt::Dialog) {
        // Only of this type is the window manager told whose window it is.
        const bool fixed = minimumSize() == maximumSize();
        setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowCloseButtonHint |
                       (fixed ? Qt::WindowFlags() : Qt::WindowMinMaxButtonsHint));
        // Flags make the toolkit forget that its place was that of the inner rectangle.
        if (placement_.Placed()) setGeometry(geometry());
    }
    winId();  // an owner must be named before the window is first mapped
    if (owner) {
        owner->winId();
        windowHandle()->setTransientParent(owner->windowHandle());
        owner->opened_.emplace_back(this);
    }
    if (!placement_.Placed()) Place(owner);
    show();
    raise();
    activateWindow();
}

void Form::Unload() {
    const Ref<Form> alive(this);
    close();
}

Variant Form::Get(std::u16string_view member, Arguments arguments) {
    if (const Member* found = FindMember(member)) return found->Read(*this);
    return Object::Get(member, arguments);
}

void Form::Set(std::u16string_view member, const Variant& value, Arguments arguments) {
    const Member* found = FindMember(member);
    if (!found || !found->Assign) return Object::Set(member, value, arguments);
    found->Assign(*this, value);
}

Text Form::TypeName() const {
    return ToText(objectName());
}

void Form::SetCancelButton(QAbstractButton* button) {
    cancel_ = button;
}

void Form::SetDefaultButton(QPushButton* button) {
    if (default_) default_->setDefault(false);
    default_ = button;
    if (button) button->setDefault(true);
}

void Form::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // Whoever has the keyboard has its borders, however soon it is closed.
    if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::ActivationChange) {
        placement_.Noticed();
    }
}

void Form::closeEvent(QCloseEvent* event) {
    const Ref<Form> alive(this);
    bool closes = CloseOwned();
    if (closes && loaded_) RunGuarded(this, [&] { closes = Form_QueryUnload(); });
    event->setAccepted(closes);
    if (!closes || !loaded_) return;
    loaded_ = false;
    RunGuarded(this, [this] { Form_Unload(); });
    ReleaseWhenIdle();
}

void Form::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (event->spontaneous()) return;
    if (modal_) modal_->quit();
}

void Form::keyPressEvent(QKeyEvent* event) {
    QAbstractButton* button = nullptr;
    if (event->key() == Qt::Key_Escape) {
        button = cancel_;
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        button = qobject_cast<QAbstractButton*>(focusWidget());
        if (!button) button = default_;
    }
    if (!button) return QWidget::keyPressEvent(event);
    if (button->isVisible()) button->click();  // a disabled button does nothing
}

void Form::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    placement_.Noticed();
}

void Form::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placement_.Noticed();
    if (loaded_) RunGuarded(this, [this] { Form_Resize(); });
}

void Form::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous()) placement_.Shown();
}

// False when one of them stays open.
bool Form::CloseOwned() {
    while (!opened_.empty()) {
        const QPointer<Form> last = opened_.back();
        if (last && last->loaded_ && !last->close()) return false;
        opened_.pop_back();
    }
    return true;
}

// No larger than the screen; over the owner, or in the middle of the screen; one more window beside
// its owner stands aside.
void Form::Place(const Form* owner) {
    constexpr int kAside = 28;
    const QRect room = (owner ? owner->screen() : screen())->availableGeometry();
    const QMargins borders = FramePlacement::UsualBorders();
    FitSmallScreen(*this, room.size().shrunkBy(borders));
    resize(size().boundedTo(room.size().shrunkBy(borders)));
    const bool beside = owner && owner->isVisible();
    QRect frame(QPoint(), size().grownBy(borders));
    frame.moveCenter(beside ? owner->placement_.Outer().center() : room.center());
    if (beside && windowModality() == Qt::NonModal) {
        frame.moveTopLeft(owner->placement_.Outer().topLeft() + QPoint(kAside, kAside));
    }
    frame.moveRight(std::min(frame.right(), room.right()));
    frame.moveBottom(std::min(frame.bottom(), room.bottom()));
    frame.moveLeft(std::max(frame.left(), room.left()));
    frame.moveTop(std::max(frame.top(), room.top()));
    setGeometry(frame.marginsRemoved(borders));
}

// The form may be in the middle of an event of its own; its last reference goes after that.
void Form::ReleaseWhenIdle() {
    QMetaObject::invokeMethod(
        qApp,
        [form = QPointer<Form>(this)] {
            if (form && !form->loaded_) const Ref<Form> last = std::exchange(form->self_, nullptr);
        },
        Qt::QueuedConnection);
}

}  // namespace zorvane
