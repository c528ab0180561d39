// What a second start of the program does.
#pragma once

#include <string>
#include <vector>

#include "host/show/WallpaperShow.hpp"

namespace nivlo {

/// Asks the nivlo that already runs to show what this one was to show, and says so. Of `given`, the options
/// of the command line as "--name=value", those that are no wishes are named as left out. Returns the exit
/// status.
int handOver(const ShowOptions& wishes, const std::vector<std::string>& given);

}  // namespace nivlo
