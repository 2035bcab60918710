#include "program/demos/ChartScale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "zorvane/platform/NumberText.h"

namespace zorvane {
namespace {

// A mark's label: whole numbers of a unit, "200 µs", "1 ms", "2.5 ms".
Text MarkText(double seconds) {
    struct Unit {
        double seconds;
        const char16_t* name;
    };
    constexpr std::array<Unit, 4> kUnits{
        {{1, u" s"}, {1e-3, u" ms"}, {1e-6, u" \u00B5s"}, {1e-9, u" ns"}}};
    if (seconds == 0) return u"0";
    for (const Unit& unit : kUnits) {
        const double count = seconds / unit.seconds;
        if (count > 0.999) return DoubleText(count, 4) + unit.name;
    }
    return DoubleText(seconds / 1e-9, 4) + u" ns";
}

}  // namespace

ChartScale::ChartScale(std::span<const double> seconds) {
    double least = std::numeric_limits<double>::infinity();
    double greatest = 0;
    for (const double value : seconds) {
        if (!(value > 0) || !std::isfinite(value)) continue;
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
    if (greatest == 0) return;
    logarithmic_ = greatest > kSpread * least;
    if (logarithmic_) {
        // A whole decade below the shortest, so that its bar can be seen.
        bottom_ = std::floor(std::log10(least) - 0.15);
        // The logarithm of a power of ten may come out a little above the whole number.
        top_ = std::ceil(std::log10(greatest) - 1e-9);
        MarkDecades();
    } else {
        top_ = greatest;
        MarkSteps();
    }
}

void ChartScale::MarkDecades() {
    for (auto decade = static_cast<int>(bottom_); decade <= static_cast<int>(top_); ++decade) {
        const double seconds = std::pow(10.0, decade);
        marks_.push_back({seconds, MarkText(seconds)});
        if (decade == static_cast<int>(top_)) break;
        for (int times = 2; times <= 9; ++times) marks_.push_back({seconds * times, {}});
    }
}

void ChartScale::MarkSteps() {
    // Steps of 1, 2 or 5 times a power of ten; four to eight of them.
    const double decade = std::pow(10.0, std::floor(std::log10(top_ / 4)));
    double step = decade;
    for (const double times : {2.0, 5.0, 10.0}) {
        if (top_ / step > 8) step = decade * times;
    }
    const auto steps = static_cast<int>(std::ceil(top_ / step - 1e-9));
    for (int i = 0; i <= steps; ++i) marks_.push_back({i * step, MarkText(i * step)});
    top_ = steps * step;
}

double ChartScale::HeightOf(double seconds) const noexcept {
    if (!(seconds > 0)) return 0;
    const double value = logarithmic_ ? std::log10(seconds) : seconds;
    return std::clamp((value - bottom_) / (top_ - bottom_), 0.0, 1.0);
}

std::uint32_t ContenderColour(int column, bool onDark) noexcept {
    constexpr std::array<std::uint32_t, 4> kOnLight{0x1F3A6E, 0xE8650A, 0x2A9D84, 0xB04FD8};
    constexpr std::array<std::uint32_t, 4> kOnDark{0x5A86AE, 0xB86E48, 0x7FDDAF, 0xEDB9F0};
    const auto at = static_cast<std::size_t>(std::clamp(column, 1, 4) - 1);
    return onDark ? kOnDark[at] : kOnLight[at];
}

}  // namespace zorvane
