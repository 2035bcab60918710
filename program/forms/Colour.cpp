#include "program/forms/Colour.h"

#include <QPalette>
#include <cmath>
#include <iterator>

namespace zorvane {
namespace {

// By system colour number.
constexpr QPalette::ColorRole kRoles[] = {
    QPalette::Mid,              // scroll bar
    QPalette::Window,           // desktop
    QPalette::Highlight,        // active title bar
    QPalette::Mid,              // inactive title bar
    QPalette::Window,           // menu bar
    QPalette::Base,             // window background
    QPalette::Shadow,           // window frame
    QPalette::WindowText,       // menu text
    QPalette::Text,             // window text
    QPalette::HighlightedText,  // title bar text
    QPalette::Mid,              // active border
    QPalette::Mid,              // inactive border
    QPalette::Dark,             // application workspace
    QPalette::Highlight,        // highlight
    QPalette::HighlightedText,  // highlighted text
    QPalette::Button,           // button face
    QPalette::Dark,             // button shadow
    QPalette::PlaceholderText,  // greyed text
    QPalette::ButtonText,       // button text
    QPalette::WindowText,       // inactive title bar text
    QPalette::Light,            // button highlight
    QPalette::Shadow,           // dark shadow
    QPalette::Midlight,         // light edge
    QPalette::ToolTipText,      // tooltip text
    QPalette::ToolTipBase,      // tooltip background
};

double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

}  // namespace

QColor ToQColor(OleColour value, const QPalette& palette) {
    if (IsSystemColour(value)) {
        const std::size_t number = value & 0xFFU;
        return number < std::size(kRoles) ? palette.color(kRoles[number]) : QColor(Qt::black);
    }
    const auto part = [value](unsigned shift) { return static_cast<int>(value >> shift & 0xFFU); };
    return QColor(part(0), part(8), part(16));
}

OleColour FromQColor(const QColor& colour) {
    return static_cast<OleColour>(colour.red()) | static_cast<OleColour>(colour.green()) << 8U |
           static_cast<OleColour>(colour.blue()) << 16U;
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace zorvane
