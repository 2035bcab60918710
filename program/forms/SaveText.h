#pragma once
// Saving under a name that the person picks, in the folder where the last one went.

#include <QString>
#include <functional>
#include <optional>

class QIODevice;
class QWidget;

namespace zorvane {

struct SaveTextWords {
    QString Title;    // of the dialog
    QString Name;     // suggested; its ending is added to a name that comes without one
    QString Filter;   // of the names shown
    QString Failure;  // said when it could not be written, before the file's name and the reason
};

// The path that was saved as; nothing when the person has cancelled, or when it could not be
// written, which is said in a message and leaves what was there. `write` is given the path as well,
// whose ending may say what kind of file is wanted.
using WriteInto = std::function<void(QIODevice& device, const QString& path)>;
[[nodiscard]] std::optional<QString> SaveFile(QWidget* owner, const SaveTextWords& words,
                                              const WriteInto& write);
[[nodiscard]] std::optional<QString> SaveText(QWidget* owner, const SaveTextWords& words,
                                              const QString& text);

}  // namespace zorvane
