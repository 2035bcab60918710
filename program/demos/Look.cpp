#include "program/demos/Look.h"

#include <QPalette>

namespace zorvane {

ShownColours Readable(const Look& look, const QPalette& palette) {
    constexpr double kEnough = 4.5;
    ShownColours shown{ToQColor(look.BackColor, palette), ToQColor(look.ForeColor, palette)};
    if (Contrast(shown.Back, shown.Fore) >= kEnough) return shown;
    const auto against = [](const QColor& other) {
        const bool black = Contrast(other, Qt::black) > Contrast(other, Qt::white);
        return QColor(black ? Qt::black : Qt::white);
    };
    if (IsSystemColour(look.ForeColor)) {
        shown.Fore = against(shown.Back);
    } else if (IsSystemColour(look.BackColor)) {
        shown.Back = against(shown.Fore);
    }
    return shown;
}

}  // namespace zorvane
