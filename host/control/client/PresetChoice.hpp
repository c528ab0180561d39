// The preset as the person's lasting choice.
#pragma once

#include <string>

namespace nivlo {

/// The preset that the running nivlo shows, counted from 1; 0 where none runs.
int shownPreset();

/// Has the running nivlo show a preset, and the one that the desktop starts from now on. Returns what the
/// person should know where that is not both now and later, empty when nothing is to be said.
std::string choosePreset(int preset);

}  // namespace nivlo
