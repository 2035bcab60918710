#include "program/forms/FontDialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QHBoxLayout>
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
    fonts_->setSizeGripEnabled(false);
    fonts_->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);

    fonts_->installEventFilter(this);

    colour_->setObjectName(QStringLiteral("TextColorBtn"));
    connect(colour_, &QPushButton::clicked, this, [this] { PickColour(); });
    colour_->setToolTip(QStringLiteral("Pick the color of the window's text"));
    ShowColour();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fonts_);
    auto* below = new QHBoxLayout;
    below->addWidget(colour_);
    below->addWidget(buttons);
    layout->addLayout(below);
    fonts_->show();
    opened_ = fonts_->currentFont();  // as the dialog understands it, not as it was asked
}

FontChoice FontDialog::Choice() const {
    return {WithChanges(choice_.Font, opened_, fonts_->currentFont()), choice_.Colour,
            choice_.Back};
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
    auto* sample = fonts_->findChild<QWidget*>(QStringLiteral("qt_fontDialog_sampleEdit"));
    if (!sample) return;  // a later toolkit may call it otherwise
    QPalette colours = palette();
    colours.setColor(QPalette::Text, ToQColor(choice_.Colour, palette()));
    colours.setColor(QPalette::Base, ToQColor(choice_.Back, palette()));
    sample->setPalette(colours);
}

}  // namespace zorvane
