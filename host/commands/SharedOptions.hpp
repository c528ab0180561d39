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

// Each adds its option, which stores what is given in the last argument; that must outlive the app.

/// "--bundle DIRECTORY". A relative path counts from the current directory.
CLI::Option* addBundle(CLI::App& app, std::filesystem::path& bundle);

/// "--source SIDE=SOURCE", as often as there are sides.
CLI::Option* addSources(CLI::App& app, CameraSources& sources);

/// "--machine IDENTIFIER".
CLI::Option* addMachine(CLI::App& app, std::string& machine);

// Checks of an option's value. Each returns an error message, empty if the text will do.

/// Accepts whole numbers from 1.
std::string checkCount(const std::string& text);

/// Accepts numbers above 0, in seconds or any other unit.
std::string checkPositive(const std::string& text);

}  // namespace nivlo
