#pragma once
// frmDemo2: the property-bag demonstration: a window that keeps its place, size, colours, caption
// and font in a bag when it closes and gets them back when a window of its number is opened again.

#include <cstdint>
#include <optional>
#include <vector>

#include "program/demos/Look.h"
#include "program/forms/Form.h"
#include "zorvane/propbag/IZVPropertyBag.h"

class QAction;
class QMenu;
class QMenuBar;
class QPushButton;
class QScrollArea;

namespace zorvane {

class Label;
class PropBagSession;

class frmDemo2 : public Form, public IZVPropertyBag {
    Q_OBJECT
  public:
    // The session outlives the window.
    explicit frmDemo2(PropBagSession& session);

    void cmdShowNext_Click();
    void mnuCustomBackColor_Click();
    void mnuCustomCaption_Click();
    // Does again what was taken back last, unless something else was done since.
    void mnuCustomRedo_Click();
    // Caption, colours, font and size of a window that was never stored; it stays where it is.
    void mnuCustomReset_Click();
    // Takes back the last of the changes made by menu since the window was opened.
    void mnuCustomUndo_Click();
    void mnuCustomizeFont_Click();
    void mnuFileExit_Click();
    void mnuFileKept_Click();

    // As stored: a colour that was never chosen stays a system colour.
    [[nodiscard]] OleColour BackColor() const noexcept { return look_.BackColor; }
    void SetBackColor(OleColour value);
    [[nodiscard]] OleColour ForeColor() const noexcept { return look_.ForeColor; }
    void SetForeColor(OleColour value);
    [[nodiscard]] const FontRecord& WindowFont() const noexcept { return look_.Font; }
    void SetWindowFont(const FontRecord& value);
    // 0 until the window is loaded.
    [[nodiscard]] std::int32_t Number() const noexcept { return number_; }

    // "": a window is never made again by name, only restored in place.
    [[nodiscard]] Text ClassName() const override;
    void InitProperties() override {}
    [[nodiscard]] Variant ParentObject() override;  // the window itself
    // A property that is missing, or whose value is none for it, leaves the window as it is.
    void ReadProperties(ZVPropertyBag& bag) override;
    void WriteProperties(ZVPropertyBag& bag) override;

    [[nodiscard]] Text TypeName() const override { return Form::TypeName(); }

  protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload() override;

    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Before {
        Look Worn;
        std::optional<TwipRect> Size;  // where that was changed too
    };

    QAction* AddItem(QMenu* menu, const char* name, const QString& text, const QString& tip,
                     void (frmDemo2::*handler)());
    void AddMenus();
    void CopyFontAndColours();  // to the labels
    void PlaceBeside(const frmDemo2& other);
    void RememberLook();
    [[nodiscard]] static QSize UsualSize();  // inner, of a window that was never stored
    void SetLook(const Look& look);
    void ShowSteps();
    void Step(std::vector<Before>& from, std::vector<Before>& to);

    PropBagSession& session_;
    std::int32_t number_ = 0;
    Look look_;  // its Caption may be an older one
    std::vector<Before> undo_, redo_;
    bool placed_ = false;  // a stored place has been read

    QPointer<Form> first_;  // of the windows opened one from another; null in the first itself
    QMenuBar* menu_;
    QAction* undoItem_ = nullptr;
    QAction* redoItem_ = nullptr;
    Label* label1_;  // the number
    Label* label2_;  // the explanation
    Label* label3_;  // why settings will not last
    QScrollArea* explanation_;
    QPushButton* cmdShowNext_;
};

}  // namespace zorvane
