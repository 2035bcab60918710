#pragma once
// Dialogs: every question that the program asks a person, behind one replaceable object.
//
// The toolkit's own dialogs, never the desktop's: they look and answer alike everywhere.

#include <QString>
#include <optional>

#include "program/forms/Colour.h"
#include "program/forms/FontRecord.h"

class QWidget;

namespace zorvane {

// What the font dialog offers: a font and the colour of the text, shown on a background.
struct FontChoice {
    FontRecord Font;
    OleColour Colour = kButtonText;
    OleColour Back = kButtonFace;
};

class Dialogs {
  public:
    enum class Kind { Information, Warning, Failure };

    virtual ~Dialogs() = default;

    // The dialogs in use: the toolkit's, or those of the innermost ScopedDialogs.
    static Dialogs& Current();

    // A question with two answers, of which the first loses something and the other one, which
    // Escape gives too, does not; true for the first.
    virtual bool Agree(QWidget* owner, const QString& title, const QString& question,
                       const QString& lose, const QString& keep);
    // No value: the person has cancelled.
    virtual std::optional<OleColour> Colour(QWidget* owner, OleColour shown);
    virtual std::optional<FontChoice> FontAndColour(QWidget* owner, const FontChoice& shown);
    virtual std::optional<QString> InputBox(QWidget* owner, const QString& title,
                                            const QString& prompt, const QString& shown);
    virtual void Message(QWidget* owner, const QString& title, const QString& message, Kind kind);
    // Prints plain text on the printer that the person picks; false when cancelled.
    virtual bool Print(QWidget* owner, const QString& title, const QString& text);
    // A path to write to, with the ending of `suggested` where none was given; an existing file has
    // been agreed to.
    virtual std::optional<QString> SaveFileName(QWidget* owner, const QString& title,
                                                const QString& suggested, const QString& filter);
};

// Answers in place of the toolkit's dialogs while it lives.
class ScopedDialogs {
  public:
    explicit ScopedDialogs(Dialogs& dialogs);
    ~ScopedDialogs();
    ScopedDialogs(const ScopedDialogs&) = delete;
    ScopedDialogs& operator=(const ScopedDialogs&) = delete;

  private:
    Dialogs* before_;
};

}  // namespace zorvane
