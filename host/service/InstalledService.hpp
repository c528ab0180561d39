// The program as something that the desktop starts.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nivlo {

/// What starts the program: only one of the two is installed at a time, so that it is not started twice.
enum class Launcher {
  SystemdUnit,     ///< where systemd runs the graphical session: it restarts a program that failed
  AutostartEntry,  ///< everywhere else
};

/// The one for this desktop, as it runs now.
Launcher suitableLauncher();

/// Where its file is, whether or not it is there.
std::filesystem::path fileOf(Launcher launcher);

/// Writes the launcher's file, in place of an earlier one, removes the other's, and has the unit started with
/// the desktop. Returns an error message, empty on success.
std::string install(Launcher launcher, const std::string& text);

/// Removes both. Returns the files that were there.
std::vector<std::filesystem::path> uninstall();

/// The next start with the desktop shows this preset. Returns false where nothing is installed, or its file
/// cannot be changed.
bool rememberPreset(int preset);

}  // namespace nivlo
