#pragma once
// What the windows say about where to turn to, one line each.

#include "zorvane/platform/Text.h"

namespace zorvane {

// Each line after a line break.
[[nodiscard]] inline Text ContactLines() {
    return u"\r\nOrders: fill in the order form and send the summary to your supplier."
           u"\r\nQuestions: ask your supplier, or read the source; it is all included.";
}

}  // namespace zorvane
