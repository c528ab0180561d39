// Finds the file that the desktop should run.
#pragma once

#include <filesystem>

namespace nivlo {

struct ProgramToStart {
  std::filesystem::path path;  ///< absolute
  bool installed = false;      ///< false for the running program in the folder that it was built in
};

/// Returns the running program if it is installed. Otherwise looks for an installed one, on PATH and then in
/// the prefix that the build was configured for, because a build folder may be cleaned or moved. If there is
/// none either, returns the running program.
ProgramToStart programToStart();

}  // namespace nivlo
