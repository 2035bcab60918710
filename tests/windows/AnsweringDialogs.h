#pragma once
// AnsweringDialogs: keeps what is said instead of showing it, and answers in place of a person, who
// agrees; no answer is a click on Cancel.

#include <QStringList>

#include "program/forms/Dialogs.h"

namespace zorvane::test {

class AnsweringDialogs : public Dialogs {
  public:
    bool Agree(QWidget*, const QString&, const QString& question, const QString&,
               const QString&) override {
        return Said << question, Agrees;
    }
    std::optional<OleColour> Colour(QWidget*, OleColour shown) override {
        return ColourShown = shown, ColourAnswer;
    }
    std::optional<FontChoice> FontAndColour(QWidget*, const FontChoice& shown) override {
        return FontShown = shown, FontAnswer;
    }
    std::optional<QString> InputBox(QWidget*, const QString& title, const QString& prompt,
                                    const QString&) override {
        return Asked = title + "\n" + prompt, Answer;
    }
    void Message(QWidget*, const QString&, const QString& message, Kind) override {
        Said << message;
    }
    bool Print(QWidget*, const QString&, const QString& text) override {
        return Printed = text, true;
    }
    std::optional<QString> SaveFileName(QWidget*, const QString&, const QString& suggested,
                                        const QString&) override {
        // What could not be saved is asked for once more, and a person gives up.
        const bool again = !Said.isEmpty() && suggested == Answer;
        return again ? std::nullopt : (Suggested = suggested, Answer);
    }

    bool Agrees = true;
    QStringList Said;
    QString Asked, Printed, Suggested;
    std::optional<QString> Answer;
    std::optional<OleColour> ColourShown, ColourAnswer;
    std::optional<FontChoice> FontShown, FontAnswer;

  private:
    ScopedDialogs scope_{*this};
};

}  // namespace zorvane::test
