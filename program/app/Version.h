#pragma once
// The program's version numbers, which are the library's.

#include "zorvane/platform/NumberText.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Version.h"

namespace zorvane {

// "major.minor.revision"
[[nodiscard]] inline Text ProgramVersion() {
    return LongText(ZORVANE_VERSION_MAJOR) + Text(u".") + LongText(ZORVANE_VERSION_MINOR) +
           Text(u".") + LongText(ZORVANE_VERSION_REVISION);
}

}  // namespace zorvane
