// Where a program keeps its things.
#pragma once

#include <filesystem>
#include <optional>

namespace nivlo {

/// The directory for what the program itself writes down for this user: "nivlo" in $XDG_STATE_HOME where that
/// is an absolute path, else in ~/.local/state. Nothing where there is no home directory either. It need not
/// exist. Reads the environment: not to be called while another thread changes that.
std::optional<std::filesystem::path> userLibraryDirectory();

}  // namespace nivlo
