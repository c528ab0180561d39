// The texts of the files by which the desktop starts the program.
#pragma once

#include <string>
#include <vector>

namespace nivlo {

/// The program's absolute path, followed by its arguments.
using LaunchCommand = std::vector<std::string>;

/// Writes a systemd user unit that belongs to the graphical session. It restarts the program if that fails,
/// with growing pauses.
std::string unitText(const LaunchCommand& command);

/// Writes a desktop entry for the autostart folder.
std::string autostartText(const LaunchCommand& command);

/// Returns the text of either with another preset in its command, or unchanged if its command names none.
std::string withPreset(const std::string& text, int preset);

}  // namespace nivlo
