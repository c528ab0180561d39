// Chooses a preset for now and for later.
#pragma once

#include <string>

namespace nivlo {

/// Returns the preset that the running Nivlo shows, counted from 1; 0 if none is running.
int shownPreset();

/// Makes the running Nivlo show a preset, counted from 1, and the desktop start Nivlo with it from now on.
/// Returns a sentence for users if the running Nivlo refuses, or if none is running; else an empty text.
std::string choosePreset(int preset);

}  // namespace nivlo
