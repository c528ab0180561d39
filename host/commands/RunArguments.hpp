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

/// Reads the options. It must outlive each app that it was added to, and every one of them sets the same
/// options.
class RunArguments {
 public:
  RunArguments() = default;
  RunArguments(const RunArguments&) = delete;
  RunArguments& operator=(const RunArguments&) = delete;

  /// Adds all options.
  void addTo(CLI::App& app);

  /// Adds those that make sense for a wallpaper that the desktop starts.
  void addLastingTo(CLI::App& app);

  /// What the parsed command line asks for.
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

/// The options that addLastingTo() reads, as arguments that give the same result in any current directory.
/// The preset always stands among them, the others only where they differ from the default.
std::vector<std::string> lastingArguments(const RunOptions& options);

}  // namespace nivlo
