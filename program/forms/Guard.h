#pragma once
// The one place where an error that no handler has trapped comes to rest.

#include <functional>

class QWidget;

namespace zorvane {

// Runs a handler. An Error that leaves it is shown in one message box over `owner` (number, source,
// description), and the program goes on; so does a lack of memory, as number 7. Nothing passes.
void RunGuarded(QWidget* owner, const std::function<void()>& handler);

}  // namespace zorvane
