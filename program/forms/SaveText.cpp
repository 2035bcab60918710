#include "program/forms/SaveText.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>
#include <QWidget>

#include "program/forms/Dialogs.h"

namespace zorvane {

std::optional<QString> SaveText(QWidget* owner, const SaveTextWords& words, const QString& text) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QDir folder(QDir(documents).exists() ? documents : QDir::homePath());
    const auto path = Dialogs::Current().SaveFileName(owner, words.Title,
                                                      folder.filePath(words.Name), words.Filter);
    if (!path) return std::nullopt;
    QSaveFile file(*path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text.toUtf8());
        if (file.commit()) return path;
    }
    Dialogs::Current().Message(owner, owner->windowTitle(),
                               words.Failure + QLatin1Char('\n') + file.errorString(),
                               Dialogs::Kind::Warning);
    return std::nullopt;
}

}  // namespace zorvane
