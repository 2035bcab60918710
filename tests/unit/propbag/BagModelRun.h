#pragma once
// One seeded stream of operations through a ZVPropertyBag and its model.

#include <cstdint>
#include <optional>
#include <string>

namespace zorvane {

// Runs `operations` of them and compares outcome and whole state after each. Gives what first
// disagreed, with the number of the operation; nothing when all agreed.
std::optional<std::string> RunBagModel(std::uint32_t seed, int operations);

}  // namespace zorvane
