// "nivlo chime".
#pragma once

#include "host/commands/Options.hpp"

namespace nivlo {

/// Plays the bundle's chime to its end. Returns the exit status.
int runChime(const ChimeOptions& options);

}  // namespace nivlo
