// Hands a second start of the program over to the first.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/show/ShowOptions.hpp"

namespace nivlo {

/// An option as the command line gave it.
struct GivenOption {
  std::string name;  ///< "--seconds"
  std::string value;
};

/// Asks the Nivlo that is already running to show this bundle (an empty path: the one that it shows) with
/// these changes, and tells the user about it. `startOnly` are options that a running program cannot take
/// over; they are reported as ignored. Returns the exit status.
int handOver(const std::filesystem::path& bundle, const ShowOptions& changes,
             const std::vector<GivenOption>& startOnly);

}  // namespace nivlo
