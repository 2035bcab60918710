#pragma once
// One seeded stream of operations through a ZVCollectionEx and its model.

#include <cstdint>
#include <optional>
#include <string>

namespace zorvane {

// What first disagreed among `operations` operations, or nothing.
std::optional<std::string> RunCollectionModel(std::uint32_t seed, int operations);

}  // namespace zorvane
