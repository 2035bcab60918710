#pragma once
// FontRecord: the eight properties that are kept of a font, and what the screen makes of them.
//
// It is a value and knows nothing of a screen: a family that is missing here, a size that no dialog
// offers and the character set all survive, since only display maps it to the toolkit's font.

#include <QFont>

#include "zorvane/platform/Font.h"

namespace zorvane {

using FontRecord = FontValue;

// What the windows are laid out for.
[[nodiscard]] FontRecord ProgramFont();

// For display: a weight of 0 shows as 400, a size that is no size as the program's own.
[[nodiscard]] QFont ToQFont(const FontRecord& record);

// `record` with what differs between the font that a dialog was opened with and the one it gave
// back. A dialog rounds sizes and replaces missing families by itself; that is no wish of the user.
[[nodiscard]] FontRecord WithChanges(FontRecord record, const QFont& shown, const QFont& chosen);

// The compact sans that the windows are laid out for; wider ones clip in the narrow columns.
[[nodiscard]] QFont CompactFont(double points = 9);

}  // namespace zorvane
