#include "program/app/SessionEnd.h"

namespace zorvane {

void CloseWindowsAtSessionEnd() {}

}  // namespace zorvane
