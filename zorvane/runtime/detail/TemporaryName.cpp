#include "zorvane/runtime/detail/TemporaryName.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <random>

namespace zorvane {
namespace {

constexpr std::string_view kStart = ".zorvane-";
constexpr std::string_view kEnd = ".saving";
constexpr std::size_t kDigits = 16;

}  // namespace

std::string TemporaryName() {
    std::random_device random;
    const std::uint64_t number = std::uint64_t{random()} << 32 | random();
    std::array<char, kDigits + 1> digits;
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return std::string(kStart) + digits.data() + std::string(kEnd);
}

bool IsTemporaryName(std::string_view name) noexcept {
    return name.size() == kStart.size() + kDigits + kEnd.size() && name.starts_with(kStart) &&
           name.ends_with(kEnd);
}

}  // namespace zorvane
