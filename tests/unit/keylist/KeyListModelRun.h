#pragma once
// One seeded stream of operations through a KeyListEX and its model.

#include <cstdint>
#include <optional>
#include <string>

namespace zorvane {

// Runs `operations` of them and compares outcome and whole state after each. Gives what first
// disagreed, with the seed and the number of the operation; nothing when all agreed.
std::optional<std::string> RunKeyListModel(std::uint32_t seed, int operations);

}  // namespace zorvane
