#pragma once
// Making a caption fit the room it has.

#include <QFont>
#include <QSize>
#include <QString>

namespace zorvane {

// The room that a text takes when it is wrapped to `width` pixels; its line breaks hold, and '&'
// marks a mnemonic.
[[nodiscard]] QSize WrappedSize(const QFont& font, const QString& text, int width);

// `font`, or the largest smaller one (down to `least` points) in which the wrapped text fits
// `room`.
[[nodiscard]] QFont FittingFont(QFont font, const QString& text, QSize room, double least = 6);

}  // namespace zorvane
