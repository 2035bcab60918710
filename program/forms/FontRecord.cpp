#include "program/forms/FontRecord.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

#include "program/forms/Strings.h"

namespace zorvane {

FontRecord ProgramFont() {
    return {.Name = u"Liberation Sans", .Size = 9};
}

QFont ToQFont(const FontRecord& record) {
    constexpr double kLargest = 2048;
    QFont font = CompactFont();
    if (!record.Name.Empty()) font.setFamilies({ToQString(record.Name)});
    if (std::isfinite(record.Size) && record.Size > 0) {
        font.setPointSizeF(std::min(record.Size, kLargest));
    }
    int weight = record.Weight <= 0 ? 400 : std::min<int>(record.Weight, 1000);
    if (record.Bold) weight = std::max(weight, 700);
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setItalic(record.Italic);
    font.setStrikeOut(record.Strikethrough);
    font.setUnderline(record.Underline);
    return font;
}

FontRecord WithChanges(FontRecord record, const QFont& shown, const QFont& chosen) {
    if (chosen.family() != shown.family()) record.Name = ToText(chosen.family());
    if (chosen.pointSizeF() != shown.pointSizeF()) record.Size = chosen.pointSizeF();
    if (chosen.weight() != shown.weight()) {
        record.Weight = static_cast<std::int16_t>(chosen.weight());
        record.Bold = chosen.weight() >= QFont::DemiBold;
    }
    if (chosen.italic() != shown.italic()) record.Italic = chosen.italic();
    if (chosen.strikeOut() != shown.strikeOut()) record.Strikethrough = chosen.strikeOut();
    if (chosen.underline() != shown.underline()) record.Underline = chosen.underline();
    return record;
}

QFont CompactFont(double points) {
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arimo"),
                      QStringLiteral("Arial"), QStringLiteral("Helvetica"),
                      QStringLiteral("DejaVu Sans Condensed")});
    font.setPointSizeF(points);
    return font;
}

}  // namespace zorvane
