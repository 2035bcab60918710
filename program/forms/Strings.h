#pragma once
// The project's text and the toolkit's, one to the other.

#include <QString>

#include "zorvane/platform/Text.h"

namespace zorvane {

[[nodiscard]] inline QString ToQString(std::u16string_view units) {
    return QString::fromUtf16(units.data(), static_cast<qsizetype>(units.size()));
}

[[nodiscard]] inline Text ToText(const QString& text) {
    return Text(std::u16string_view(reinterpret_cast<const char16_t*>(text.utf16()),
                                    static_cast<std::size_t>(text.size())));
}

// Carriage return and line feed are one line break; the toolkit paints the return as a mark.
[[nodiscard]] inline QString ForDisplay(QString text) {
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

}  // namespace zorvane
