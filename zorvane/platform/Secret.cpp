#include "zorvane/platform/Secret.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <random>

namespace zorvane {
namespace {

// Mixes what is hard to guess and differs at every call: the time, and where things lie.
std::uint64_t GuessedBits() noexcept {
    static std::atomic<std::uint32_t> calls = 0;
    const auto clock = [](auto now) {
        return static_cast<std::uint64_t>(now.time_since_epoch().count());
    };
    std::uint64_t bits = reinterpret_cast<std::uintptr_t>(&calls);
    for (const std::uint64_t more :
         {clock(std::chrono::steady_clock::now()), clock(std::chrono::system_clock::now()),
          static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&bits)),
          std::uint64_t{++calls}}) {
        bits = (bits ^ more) * 0x9E3779B97F4A7C15u;
        bits ^= bits >> 29;
    }
    return bits;
}

}  // namespace

std::uint64_t SecretBits() noexcept {
    const std::uint64_t guessed = GuessedBits();
    try {
        std::random_device device;
        return guessed ^ (std::uint64_t{device()} << 32 | device());
    } catch (const std::exception&) {
        return guessed;
    }
}

// Made when first asked for, which may be before main.
const HashSecret& TheHashSecret() noexcept {
    static const HashSecret secret{SecretBits(), SecretBits() | 1};
    return secret;
}

}  // namespace zorvane
