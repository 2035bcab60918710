#pragma once
// ChartScale: the axis of durations beside a chart: where a duration stands, and what is written.

#include <cstdint>
#include <span>
#include <vector>

#include "zorvane/platform/Text.h"

namespace zorvane {

class ChartScale {
  public:
    struct Mark {
        double Seconds;
        Text Label;  // empty for a line between two labels
    };

    // An axis that holds all the durations: linear from 0, or by decades where the longest is more
    // than kSpread times the shortest. Durations of 0 and below count for nothing.
    explicit ChartScale(std::span<const double> seconds);

    static constexpr double kSpread = 12;

    [[nodiscard]] bool Logarithmic() const noexcept { return logarithmic_; }
    // From bottom to top.
    [[nodiscard]] const std::vector<Mark>& Marks() const noexcept { return marks_; }
    // The height of a duration between the bottom (0) and the top (1) of the axis.
    [[nodiscard]] double HeightOf(double seconds) const noexcept;

  private:
    void MarkDecades();
    void MarkSteps();

    bool logarithmic_ = false;
    double bottom_ = 0;
    double top_ = 1;
    std::vector<Mark> marks_;
};

// The colour 0x00RRGGBB of a contender's bars, by its column 1..4. The four stay apart for every
// kind of colour blindness and stand out from a light or a dark background.
[[nodiscard]] std::uint32_t ContenderColour(int column, bool onDark) noexcept;

}  // namespace zorvane
