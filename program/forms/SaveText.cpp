#include "program/forms/SaveText.h"

#include <QBuffer>
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

// Replaces what was there by all of these bytes, or leaves it; gives what went wrong. The toolkit's
// own buffer would be lost without a word on a full disk, and of what is written past that a part
// may be all that fits.
std::optional<QString> Replace(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return file.errorString();
    for (qsizetype done = 0; done < bytes.size();) {
        const qint64 more = file.write(bytes.constData() + done, bytes.size() - done);
        if (more <= 0) return file.errorString();
        done += static_cast<qsizetype>(more);
    }
    if (!file.commit()) return file.errorString();
    return std::nullopt;
}

}  // namespace

std::optional<QString> SaveFile(QWidget* owner, const SaveTextWords& words,
                                const WriteInto& write) {
    QString suggested = Folder().filePath(words.Name);
    while (const auto path =
               Dialogs::Current().SaveFileName(owner, words.Title, suggested, words.Filter)) {
        QBuffer written;
        written.open(QIODevice::WriteOnly);
        write(written, *path);
        const auto failure = Replace(*path, written.data());
        if (!failure) {
            LastFolder() = QFileInfo(*path).absolutePath();
            return path;
        }
        Dialogs::Current().Message(owner, owner->windowTitle(),
                                   words.Failure + QLatin1Char('\n') +
                                       QDir::toNativeSeparators(*path) + QLatin1Char('\n') +
                                       *failure,
                                   Dialogs::Kind::Warning);
        suggested = *path;  // to be mended, not to be typed again
    }
    return std::nullopt;
}

std::optional<QString> SaveText(QWidget* owner, const SaveTextWords& words, const QString& text) {
    return SaveFile(owner, words,
                    [&](QIODevice& device, const QString&) { device.write(text.toUtf8()); });
}

}  // namespace zorvane
