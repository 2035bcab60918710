#pragma once
// Look: what a person may customize of a property-bag window, and how its colours are shown.

#include <QColor>

#include "program/forms/Colour.h"
#include "program/forms/FontRecord.h"
#include "zorvane/platform/Text.h"

class QPalette;

namespace zorvane {

struct Look {
    Text Caption = u"Zorvane - Property Bag Demonstration";
    OleColour BackColor = kButtonFace;
    OleColour ForeColor = kButtonText;
    FontRecord Font = ProgramFont();
};

struct ShownColours {
    QColor Back, Fore;
};

// Under another palette than the one that a colour was chosen under, text would vanish where only
// one of the two was chosen: then the other one gives way. Two chosen colours are the user's will.
[[nodiscard]] ShownColours Readable(const Look& look, const QPalette& palette);

}  // namespace zorvane
