#pragma once
// SessionEnd: the system's word that the program has to go, turned into an orderly end.

namespace zorvane {

// From now on a signal that ends sessions (hang-up, interrupt, termination) closes every window as
// by hand, so that what is kept when a window closes is kept. Once, after the application object is
// made. Where the system has no such signals, nothing.
void CloseWindowsAtSessionEnd();

}  // namespace zorvane
