#pragma once
// One seeded stream of operations through the platform's Collection and a plain list that is
// searched from its beginning.

#include <cstdint>
#include <optional>
#include <string>

namespace zorvane {

// Runs `operations` of them and compares outcome and whole state after each. Gives what first
// disagreed, with the number of the operation; nothing when all agreed.
std::optional<std::string> RunPlatformCollectionModel(std::uint32_t seed, int operations);

}  // namespace zorvane
