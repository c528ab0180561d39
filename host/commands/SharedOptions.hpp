// Options that several commands take.
#pragma once

#include <filesystem>
#include <string>

#include "linux/camera/selection/CameraSource.hpp"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace nivlo {

// Each adds its option. What is given goes to the last argument, which must exist until parsing is over.

/// "--bundle WALLPAPER". Stores the bundle's folder (see findBundle), an absolute path.
CLI::Option* addBundle(CLI::App& app, std::filesystem::path& bundle);

/// "--source SIDE=SOURCE", once for each side of the device or for one of them.
CLI::Option* addSources(CLI::App& app, CameraSources& sources);

/// "--turn SIDE=TURN", any number of times.
CLI::Option* addTurns(CLI::App& app, CameraSources& sources);

/// "--machine IDENTIFIER".
CLI::Option* addMachine(CLI::App& app, std::string& machine);

// Checks of an option's value. Each returns an error message, empty if the text is acceptable.

/// Accepts whole numbers from 1.
std::string checkCount(const std::string& text);

/// Accepts durations in seconds that a timer of the main loop can wait for: more than 0, less than 50 days.
std::string checkSeconds(const std::string& text);

}  // namespace nivlo
