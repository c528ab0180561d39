// The options of "nivlo run" on the command line: reading them, and writing them again.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "host/commands/RunOptions.hpp"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace nivlo {

/// Reads the options. Added to several apps, it reads whichever of them was given some. It must stay where it
/// is until parsing is over, and the apps must outlive it.
class RunArguments {
 public:
  RunArguments() = default;
  RunArguments(const RunArguments&) = delete;
  RunArguments& operator=(const RunArguments&) = delete;

  /// Adds all options.
  void addTo(CLI::App& app);

  /// Adds those that suit a wallpaper that the desktop starts.
  void addLastingTo(CLI::App& app);

  /// Returns what the command line asks for, once that has been parsed.
  RunOptions options() const;

 private:
  void addChanges(CLI::App& app);
  void addDevices(CLI::App& app);
  void addBehaviour(CLI::App& app);
  void addDrawing(CLI::App& app);

  RunOptions options_;
  std::vector<const CLI::App*> apps_;
  std::set<const CLI::Option*> changes_;  // those that a running Nivlo can take over
};

/// Writes the options that addLastingTo() reads as arguments, with absolute paths, as the desktop starts the
/// program in a directory of its own choice. The preset is always among them, the others only if they differ
/// from the default.
std::vector<std::string> lastingArguments(const RunOptions& options);

}  // namespace nivlo
