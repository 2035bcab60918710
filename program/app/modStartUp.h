#pragma once
// modStartUp: where the program begins and ends.

#include <filesystem>

#include "program/demos/PropBagSession.h"

namespace zorvane::modStartUp {

// The program's one bag with the counter of its windows, created on first use.
[[nodiscard]] PropBagSession& BagSession();
// "PropBag.dat" in the program's directory, as the system names that: byte for byte; or in the
// user's StateFolder.
[[nodiscard]] std::filesystem::path BagFile();
// The bag becomes what the file holds, and the file what the bag holds. Both are called around one
// opening of the property-bag window and at no other time.
void LoadBag();
void SaveBag();

// The splash over the loaded but unseen main window, then the main window; returns when that has
// been unloaded. Needs a QApplication and runs no event loop but the windows' own.
void Main();

}  // namespace zorvane::modStartUp
