// Has the desktop start the program.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nivlo {

/// The ways in which a desktop starts the program. Only one of the two is installed at a time, or the program
/// would be started twice.
enum class Launcher {
  SystemdUnit,     ///< where systemd runs the graphical session; restarts the program if it fails
  AutostartEntry,  ///< on desktops that run such entries
};

/// Returns whether the user's graphical session is one of systemd's. Many compositors never start the target
/// that stands for it, and a unit that belongs to it would then never be started.
bool systemdRunsTheSession();

/// Returns the path of its file, whether or not that exists.
std::filesystem::path fileOf(Launcher launcher);

/// Writes the launcher's file, replacing an earlier one, and removes the other launcher. A systemd unit is
/// also enabled. Returns an error message, empty on success.
std::string install(Launcher launcher, const std::string& text);

/// Removes both launchers. Returns the files that existed.
std::vector<std::filesystem::path> uninstall();

/// Makes the desktop start the program with this wallpaper (see withWallpaper) from now on. Returns false if
/// nothing is installed, or if its file cannot be changed.
bool rememberWallpaper(const std::string& bundle, int preset);

}  // namespace nivlo
