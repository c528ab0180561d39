// "nivlo run".
#pragma once

#include "host/commands/Options.hpp"

namespace nivlo {

/// Shows the wallpaper until it is told to end: by SIGINT, SIGTERM or SIGHUP, after a number of frames, or
/// after a time. Returns the exit status.
int runWallpaper(const RunOptions& options);

}  // namespace nivlo
