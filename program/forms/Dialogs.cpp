#include "program/forms/Dialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTextDocument>
#include <algorithm>
#include <utility>

#include "program/forms/FontDialog.h"
#include "program/forms/SmallScreen.h"

namespace zorvane {
namespace {

Dialogs* replacement = nullptr;

// Shows a dialog of the toolkit, whole or scrolled; true when it was accepted.
bool Accepted(QDialog& dialog) {
    constexpr QSize kBorders(12, 32);
    const QSize room = dialog.screen()->availableSize() - kBorders;
    const bool sized = dialog.testAttribute(Qt::WA_Resized);
    const QSize wish = sized ? dialog.size() : dialog.sizeHint();
    FitSmallScreen(dialog, room);
    dialog.resize(wish.boundedTo(room));
    return dialog.exec() == QDialog::Accepted;
}

// The toolkit does not say whether what it printed into a file has arrived there.
bool IsWholeDocument(const QString& path) {
    QFile file(path);
    constexpr qint64 kEnd = 32;
    return file.open(QIODevice::ReadOnly) && file.seek(std::max<qint64>(0, file.size() - kEnd)) &&
           file.readAll().contains("%%EOF");
}

QMessageBox::Icon IconOf(Dialogs::Kind kind) {
    switch (kind) {
        case Dialogs::Kind::Information:
            return QMessageBox::Information;
        case Dialogs::Kind::Warning:
            return QMessageBox::Warning;
        case Dialogs::Kind::Failure:
            break;
    }
    return QMessageBox::Critical;
}

}  // namespace

Dialogs& Dialogs::Current() {
    static Dialogs toolkit;
    return replacement ? *replacement : toolkit;
}

bool Dialogs::Agree(QWidget* owner, const QString& title, const QString& question,
                    const QString& lose, const QString& keep) {
    QMessageBox box(QMessageBox::Question, title, question, QMessageBox::NoButton, owner);
    box.setTextFormat(Qt::PlainText);
    box.addButton(lose, QMessageBox::AcceptRole);
    QPushButton* stay = box.addButton(keep, QMessageBox::RejectRole);
    box.setDefaultButton(stay);
    box.setEscapeButton(stay);
    box.exec();
    return box.clickedButton() != stay;  // none was clicked where the whole program is being ended
}

std::optional<OleColour> Dialogs::Colour(QWidget* owner, OleColour shown) {
    QColorDialog dialog(ToQColor(shown, QApplication::palette()), owner);
    dialog.setWindowTitle(QStringLiteral("Color"));
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (!Accepted(dialog)) return std::nullopt;
    return FromQColor(dialog.selectedColor());
}

std::optional<FontChoice> Dialogs::FontAndColour(QWidget* owner, const FontChoice& shown) {
    FontDialog dialog(shown, owner);
    if (!Accepted(dialog)) return std::nullopt;
    return dialog.Choice();
}

std::optional<QString> Dialogs::InputBox(QWidget* owner, const QString& title,
                                         const QString& prompt, const QString& shown) {
    QInputDialog dialog(owner);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(shown);
    dialog.resize(360, dialog.sizeHint().height());
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue();
}

void Dialogs::Message(QWidget* owner, const QString& title, const QString& message, Kind kind) {
    QMessageBox box(IconOf(kind), title, message, QMessageBox::Ok, owner);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.exec();
}

bool Dialogs::Print(QWidget* owner, const QString& title, const QString& text) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    QPrintDialog dialog(&printer, owner);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    if (dialog.exec() != QDialog::Accepted) return false;
    QTextDocument document;
    document.setDefaultFont(CompactFont(11));
    document.setPlainText(text);
    document.print(&printer);
    const QString file = printer.outputFileName();
    if (file.isEmpty() || IsWholeDocument(file)) return true;
    Message(owner, title,
            QStringLiteral("The file could not be written.\n") + QDir::toNativeSeparators(file),
            Kind::Warning);
    return false;
}

std::optional<QString> Dialogs::SaveFileName(QWidget* owner, const QString& title,
                                             const QString& suggested, const QString& filter) {
    QFileDialog dialog(owner, title, QFileInfo(suggested).path(), filter);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QFileInfo(suggested).suffix());
    dialog.selectFile(suggested);
    // Another kind of file brings its ending along: "Pictures (*.png)".
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& kind) {
        static const QRegularExpression ending(QStringLiteral("\\*\\.(\\w+)"));
        const QString wanted = ending.match(kind).captured(1);
        const QFileInfo named(dialog.selectedFiles().value(0));
        if (wanted.isEmpty() || named.suffix() != dialog.defaultSuffix()) return;
        dialog.setDefaultSuffix(wanted);
        dialog.selectFile(named.completeBaseName() + QLatin1Char('.') + wanted);
    });
    if (!Accepted(dialog)) return std::nullopt;
    return dialog.selectedFiles().value(0);
}

ScopedDialogs::ScopedDialogs(Dialogs& dialogs) : before_(std::exchange(replacement, &dialogs)) {}

ScopedDialogs::~ScopedDialogs() {
    replacement = before_;
}

}  // namespace zorvane
