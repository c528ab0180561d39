// The folders in which the program keeps its files.
#pragma once

#include <filesystem>
#include <optional>

namespace nivlo {

/// The directory in which the program keeps what it writes for the user, such as the log: "nivlo" in
/// $XDG_STATE_HOME or, when that is not an absolute path, in $HOME/.local/state. Absent when $HOME is not an
/// absolute path either. The directory need not exist. Reads the environment, so do not call this while
/// another thread changes that.
std::optional<std::filesystem::path> userLibraryDirectory();

}  // namespace nivlo
