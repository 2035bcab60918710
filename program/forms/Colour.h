#pragma once
// Colour values as windows keep them: 0x00BBGGRR, or with the top bit set the number of a system
// colour. The raw value is what is stored; it becomes a real colour only for painting.

#include <QColor>
#include <cstdint>

class QPalette;

namespace zorvane {

using OleColour = std::uint32_t;

inline constexpr OleColour kSystemColour = 0x80000000U;
inline constexpr OleColour kButtonFace = kSystemColour | 15U;
inline constexpr OleColour kButtonText = kSystemColour | 18U;

// A system colour follows the palette; a number that names none is black.
[[nodiscard]] QColor ToQColor(OleColour value, const QPalette& palette);
[[nodiscard]] OleColour FromQColor(const QColor& colour);

[[nodiscard]] constexpr bool IsSystemColour(OleColour value) noexcept {
    return (value & kSystemColour) != 0;
}
// Contrast between two colours from 1 (none) to 21 (black on white).
[[nodiscard]] double Contrast(const QColor& one, const QColor& other);

}  // namespace zorvane
