#pragma once
// FontDialog: the toolkit's font dialog with a button for the colour of the text.

#include <QDialog>
#include <QFont>

#include "program/forms/Dialogs.h"

class QFontDialog;
class QPushButton;

namespace zorvane {

class FontDialog : public QDialog {
    Q_OBJECT
  public:
    FontDialog(const FontChoice& shown, QWidget* owner);

    // What the dialog was opened with, and over it only what the person has changed.
    [[nodiscard]] FontChoice Choice() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void PickColour();
    void ShowColour();

    FontChoice choice_;
    QFont opened_;
    QFontDialog* fonts_;
    QPushButton* colour_;
};

}  // namespace zorvane
