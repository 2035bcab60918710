#pragma once
// Saving a text under a name that the person picks.

#include <QString>
#include <optional>

class QWidget;

namespace zorvane {

struct SaveTextWords {
    QString Title;    // of the dialog
    QString Name;     // suggested; its ending is added to a name that comes without one
    QString Filter;   // of the names shown
    QString Failure;  // said when the text could not be written, before the reason
};

// The path that the text was saved as; nothing when the person has cancelled, or when it could not
// be written, which is said in a message.
[[nodiscard]] std::optional<QString> SaveText(QWidget* owner, const SaveTextWords& words,
                                              const QString& text);

}  // namespace zorvane
