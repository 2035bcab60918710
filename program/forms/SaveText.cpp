#include "program/forms/SaveText.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QWidget>

#include "program/forms/Dialogs.h"

namespace zorvane {
namespace {

QString& LastFolder() {
    static QString folder;
    return folder;
}

QDir Folder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    for (const QString& folder : {LastFolder(), documents}) {
        if (!folder.isEmpty() && QDir(folder).exists()) return QDir(folder);
    }
    return QDir::home();
}

}  // namespace

std::optional<QString> SaveFile(QWidget* owner, const SaveTextWords& words,
                                const std::function<void(QFileDevice& file)>& write) {
    QString suggested = Folder().filePath(words.Name);
    while (const auto path =
               Dialogs::Current().SaveFileName(owner, words.Title, suggested, words.Filter)) {
        QSaveFile file(*path);
        if (file.open(QIODevice::WriteOnly)) {
            write(file);
            if (file.commit()) {
                LastFolder() = QFileInfo(*path).absolutePath();
                return path;
            }
        }
        Dialogs::Current().Message(owner, owner->windowTitle(),
                                   words.Failure + QLatin1Char('\n') +
                                       QDir::toNativeSeparators(*path) + QLatin1Char('\n') +
                                       file.errorString(),
                                   Dialogs::Kind::Warning);
        suggested = *path;  // to be mended, not to be typed again
    }
    return std::nullopt;
}

std::optional<QString> SaveText(QWidget* owner, const SaveTextWords& words, const QString& text) {
    return SaveFile(owner, words, [&](QFileDevice& file) { file.write(text.toUtf8()); });
}

}  // namespace zorvane
