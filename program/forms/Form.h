#pragma once
// Form: a top-level window in the manner that the program is written for.
//
// A form is made by MakeObject and is loaded (Form_Load runs, nothing is shown), shown, hidden and
// unloaded (Form_Unload runs). While it is loaded it holds itself, so a modeless window lives on
// after its maker has let go; one that is not loaded lives as long as its last Ref. No form is ever
// the child of another: an owner is a matter of the desktop, not of memory.
// Windows that a form has opened are closed before it closes itself.

#include <QPointer>
#include <QWidget>
#include <type_traits>
#include <vector>

#include "program/forms/FramePlacement.h"
#include "program/forms/Guard.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"

class QAbstractButton;
class QEventLoop;
class QPushButton;

namespace zorvane {

class Form : public QWidget, public virtual Object {
    Q_OBJECT
  public:
    // `name` is the class's plain name; it becomes the window's object name.
    explicit Form(const char* name);
    ~Form() override;

    // Whole, however little of it the title bar has room for.
    [[nodiscard]] const Text& Caption() const noexcept { return caption_; }
    void SetCaption(const Text& caption);

    // The outer frame in twips, single precision, exactly as assigned until the person changes it.
    [[nodiscard]] float Height() const { return placement_.Frame().Height; }
    void SetHeight(float twips) { placement_.SetHeight(twips); }
    [[nodiscard]] float Left() const { return placement_.Frame().Left; }
    void SetLeft(float twips) { placement_.SetLeft(twips); }
    [[nodiscard]] float Top() const { return placement_.Frame().Top; }
    void SetTop(float twips) { placement_.SetTop(twips); }
    [[nodiscard]] float Width() const { return placement_.Frame().Width; }
    void SetWidth(float twips) { placement_.SetWidth(twips); }
    [[nodiscard]] bool FrameSettled() const { return placement_.Settled(); }

    // The inner size in twips.
    [[nodiscard]] float ScaleHeight() const { return ToTwips(height()); }
    [[nodiscard]] float ScaleWidth() const { return ToTwips(width()); }

    void Hide() { hide(); }
    [[nodiscard]] bool Loaded() const noexcept { return loaded_; }
    // Runs Form_Load once; an Error raised there leaves the form unloaded and passes on.
    void Load();
    // Loads if need be, shows the window and returns when it has been hidden or unloaded. Raises
    // 400 when the window is on screen already.
    void ShowModal(Form* owner = nullptr);
    // Loads if need be, shows the window and returns at once.
    void ShowOwned(Form* owner = nullptr);
    // Closes what this form has opened, runs Form_Unload and takes the window off the screen,
    // unless Form_QueryUnload keeps it.
    void Unload();

    // By name: Caption, Height, Left, ScaleHeight, ScaleWidth, Top, Visible, Width.
    Variant Get(std::u16string_view member, Arguments arguments = {}) override;
    void Set(std::u16string_view member, const Variant& value, Arguments arguments = {}) override;
    [[nodiscard]] Text TypeName() const override;

  protected:
    virtual void Form_Load() {}
    // Asked before the window closes, by whatever hand; false keeps it.
    virtual bool Form_QueryUnload() { return true; }
    virtual void Form_Resize() {}
    virtual void Form_Unload() {}

    // Connects a handler: errors that leave it are shown, and the form outlives it.
    template <class Sender, class Signal, class Handler>
    void On(Sender* sender, Signal signal, Handler handler) {
        connect(sender, signal, this, [this, handler](auto&&... arguments) {
            const Ref<Form> alive(this);
            RunGuarded(this, [&] {
                if constexpr (std::is_invocable_v<const Handler&, decltype(arguments)...>) {
                    handler(arguments...);
                } else {
                    handler();
                }
            });
        });
    }
    // What Enter presses while no button has the focus, and what Escape presses.
    void SetCancelButton(QAbstractButton* button);
    void SetDefaultButton(QPushButton* button);

    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    [[nodiscard]] bool CloseOwned();
    void Place(const Form* owner);
    void ReleaseWhenIdle();

    Text caption_;
    FramePlacement placement_{*this};
    std::vector<QPointer<Form>> opened_;
    QPointer<QAbstractButton> cancel_;
    QPointer<QPushButton> default_;
    QEventLoop* modal_ = nullptr;
    Ref<Form> self_;  // while loaded
    bool loaded_ = false;
};

}  // namespace zorvane
