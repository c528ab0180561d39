// The program's command line, with all of its commands.
#pragma once

#include <memory>
#include <vector>

#include <CLI/App.hpp>

#include "host/commands/Command.hpp"

namespace nivlo {

/// The options and commands that the program knows.
class AllCommands {
 public:
  AllCommands();

  /// The command line, to be parsed or described.
  CLI::App& app() { return app_; }

  /// Returns the command that the parsed command line names, or the one that the program carries out without.
  const Command& chosen() const;

 private:
  CLI::App app_;
  std::vector<std::unique_ptr<Command>> commands_;
};

}  // namespace nivlo
