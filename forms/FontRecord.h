#pragma once
// FontRecord: the eight properties that are kept of a font.
//
// It is a value and knows nothing of a screen: a family that is missing here, a size that no dialog
// offers and the character set all survive, since only display maps it to the toolkit's font.

#include <QFont>
#include <cstdint>

#include "platform/Text.h"

namespace zorvane {

struct FontRecord {
    Text Name = u"Liberation Sans";
    double Size = 9;  // points
    std::int16_t Weight = 400;
    bool Bold = false;
    std::int16_t Charset = 0;
    bool Italic = false;
    bool Strikethrough = false;
    bool Underline = false;
    friend bool operator==(const FontRecord&, const FontRecord&) = default;
};

// For display: a weight of 0 shows as 400, a size that is no size as the program's own.
[[nodiscard]] QFont ToQFont(const FontRecord& record);

// `record` with what differs between the font that a dialog was opened with and the one it gave
// back. A dialog rounds sizes and replaces missing families by itself; that is no wish of the user.
[[nodiscard]] FontRecord WithChanges(FontRecord record, const QFont& shown, const QFont& chosen);

// The compact sans that the windows are laid out for; wider ones clip in the narrow columns.
[[nodiscard]] QFont CompactFont(double points = 9);

}  // namespace zorvane
