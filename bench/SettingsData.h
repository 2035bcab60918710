#pragma once
// The settings of all settings programs: written by a program's first version, read by its second,
// which knows a volume as well.

#include <cstddef>
#include <string>
#include <vector>

#include "bench/Report.h"

constexpr int kProfiles = 1000;
constexpr int kRounds = 100;
constexpr double kUsualVolume = 0.5;  // of a profile that was stored without one

inline std::string ProfileName(int i) {
    return "Profile " + std::to_string(i);
}
inline std::vector<std::string> ProfileTags(int i) {
    return {"tag " + std::to_string(i % 7), "colour " + std::to_string(i % 11), "quiet"};
}
