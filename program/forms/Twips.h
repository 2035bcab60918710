#pragma once
// Twips: lengths in 1/1440 of a logical inch, against device-independent pixels of 1/96 inch.

#include <algorithm>
#include <cmath>

namespace zorvane {

inline constexpr float kTwipsPerPixel = 15.0F;

// The nearest pixel. Beyond any desktop the length is cut off, and what is no number is 0.
[[nodiscard]] inline int ToPixels(float twips) noexcept {
    constexpr float kFarthest = 100000.0F;
    if (std::isnan(twips)) return 0;
    const float pixels = std::clamp(twips / kTwipsPerPixel, -kFarthest, kFarthest);
    return static_cast<int>(std::lround(pixels));
}

[[nodiscard]] inline float ToTwips(int pixels) noexcept {
    return static_cast<float>(pixels) * kTwipsPerPixel;
}

// A window's outer frame, or a control within its form.
struct TwipRect {
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    friend bool operator==(const TwipRect&, const TwipRect&) = default;
};

}  // namespace zorvane
