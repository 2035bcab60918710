#pragma once
// KeepingNotice: what a person is told where the windows' settings do not outlast the program.

#include "zorvane/platform/Text.h"

namespace zorvane {

class PropBagSession;

struct KeepingNotice {
    Text Line;    // beside a button; empty where all is well
    Text Reason;  // in a sentence or two, with the file's path
};

[[nodiscard]] KeepingNotice NoticeOf(const PropBagSession& session);

}  // namespace zorvane
