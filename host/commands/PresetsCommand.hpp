// "nivlo presets".
#pragma once

#include "host/commands/Options.hpp"

namespace nivlo {

/// Lists the presets of the bundle. Returns the exit status.
int runPresets(const PresetsOptions& options);

}  // namespace nivlo
