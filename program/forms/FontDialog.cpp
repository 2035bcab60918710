#include "program/forms/FontDialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace zorvane {
namespace {

// Without a style name the dialog selects whichever style of that weight it meets first, such as an
// oblique one.
QFont Styled(QFont font) {
    font.setStyleName(QFontDatabase::styleString(QFontInfo(font)));
    return font;
}

}  // namespace

FontDialog::FontDialog(const FontChoice& shown, QWidget* owner)
    : QDialog(owner),
      choice_(shown),
      fonts_(new QFontDialog(Styled(ToQFont(shown.Font)), this)),
      colour_(new QPushButton(QStringLiteral("Text &color..."))) {
    setWindowTitle(QStringLiteral("Font"));
    fonts_->setWindowFlags(Qt::Widget);
    fonts_->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);

    fonts_->installEventFilter(this);

    colour_->setObjectName(QStringLiteral("TextColorBtn"));
    connect(colour_, &QPushButton::clicked, this, [this] { PickColour(); });
    ShowColour();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->addButton(colour_, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fonts_);
    layout->addWidget(buttons);
    fonts_->show();
    opened_ = fonts_->currentFont();  // as the dialog understands it, not as it was asked
}

FontChoice FontDialog::Choice() const {
    return {WithChanges(choice_.Font, opened_, fonts_->currentFont()), choice_.Colour};
}

// The part inside takes itself for a dialog: Enter would do nothing, as it has no button, and
// Escape would make it vanish and leave an empty frame.
bool FontDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            accept();
            return true;
        }
        if (key == Qt::Key_Escape) {
            reject();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FontDialog::PickColour() {
    if (const auto picked = Dialogs::Current().Colour(this, choice_.Colour)) {
        choice_.Colour = *picked;
        ShowColour();
    }
}

void FontDialog::ShowColour() {
    QPixmap patch(16, 16);
    patch.fill(ToQColor(choice_.Colour, palette()));
    colour_->setIcon(patch);
}

}  // namespace zorvane
