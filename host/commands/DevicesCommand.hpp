// "nivlo devices".
#pragma once

#include "host/commands/Options.hpp"

namespace nivlo {

/// Lists the cameras as the wallpaper would find them. Returns the exit status.
int runDevices(const DevicesOptions& options);

}  // namespace nivlo
