// The texts of the files by which the desktop starts the program.
#pragma once

#include <string>
#include <vector>

namespace nivlo {

/// The program's absolute path, followed by its arguments.
using LaunchCommand = std::vector<std::string>;

/// Writes a systemd user unit that belongs to the graphical session. It restarts the program if that fails.
std::string unitText(const LaunchCommand& command);

/// Writes a desktop entry for the autostart folder.
std::string autostartText(const LaunchCommand& command);

// Each returns the text of a launcher with another wallpaper in its command, or unchanged if it has no
// command. `bundle` is the wallpaper's path, or empty for Nivlo's own. When that changes, the options --qr
// and --camera go: they were meant for the earlier wallpaper, and the new one may not understand them. All
// else stays as it is.
std::string unitWithWallpaper(const std::string& text, const std::string& bundle, int preset);
std::string autostartWithWallpaper(const std::string& text, const std::string& bundle, int preset);

}  // namespace nivlo
