#pragma once
// modStartUp: where the program begins and ends.

namespace zorvane::modStartUp {

// The splash over the loaded but unseen main window, then the main window; returns when that has
// been unloaded. Needs a QApplication and runs no event loop but the windows' own.
void Main();

}  // namespace zorvane::modStartUp
