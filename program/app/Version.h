#pragma once
// The program's version numbers, which are the library's.

#include "platform/NumberText.h"
#include "platform/Text.h"
#include "platform/Version.h"

namespace zorvane {

// "major.minor.revision"
[[nodiscard]] inline Text ProgramVersion() {
    return LongText(ZORVANE_VERSION_MAJOR) + Text(u".") + LongText(ZORVANE_VERSION_MINOR) +
           Text(u".") + LongText(ZORVANE_VERSION_REVISION);
}

}  // namespace zorvane
