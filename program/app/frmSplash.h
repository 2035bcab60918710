#pragma once
// frmSplash: the title screen; it doubles as a progress display for whoever has long work to do.
//
// Its properties can be assigned and not read; assigning one loads the window.

#include <cstdint>

#include "program/forms/Form.h"

class QFrame;
class QProgressBar;
class QPushButton;

namespace zorvane {

class Label;
class LogoBox;

class frmSplash : public Form {
    Q_OBJECT
  public:
    frmSplash();

    void CloseBtn_Click();

    // Shows or hides the Close button and sets the arrow pointer.
    void SetCloseVisible(bool value);
    // The bar runs from 1 to the value. Kept: a value below 2 is raised to 2, in the caller's
    // variable too.
    void SetProgressBarMax(std::int32_t& value);
    // Raises 380, and leaves the bar as it was, for a value outside the bar's range.
    void SetProgressBarStatus(std::int32_t value);
    void SetProgressBarText(const Text& value);
    // Kept: hides the Close button and sets the hourglass whatever the value.
    void SetProgressBarVisible(bool value);

    // The five properties by name, beside those of every form.
    void Set(std::u16string_view member, const Variant& value, Arguments arguments = {}) override;

  protected:
    void Form_Load() override;
    void Form_Unload() override;

  private:
    Label* AddLabel(const char* name, double points, bool bold = false);
    void LayOutProgress();
    void Move(QWidget* control, const QRect& at) const;  // pixels, as where there is room for all
    void PlaceCloseButton();

    double size_;  // 1, or less on a small screen
    QFrame* fraMainFrame_;
    LogoBox* picLogo_;
    Label* lblProductName_;
    Label* lblVersion_;
    Label* lblPlatform_;
    Label* lblCompanyProduct_;
    Label* lblSourceCode_;  // Label1
    Label* lblContact_;     // Label2
    Label* lblWarning_;
    QPushButton* closeBtn_;
    QFrame* picture1_;
    QProgressBar* progressBar1_;
    Label* label3_;
};

}  // namespace zorvane
