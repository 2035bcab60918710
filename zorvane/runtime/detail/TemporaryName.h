#pragma once
// Names of files that are being assembled beside the one that they will replace.

#include <string>
#include <string_view>

namespace zorvane {

// Nobody can foresee the name and put a file or a link in its place.
[[nodiscard]] std::string TemporaryName();
[[nodiscard]] bool IsTemporaryName(std::string_view name) noexcept;

}  // namespace zorvane
