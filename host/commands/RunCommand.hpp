// "nivlo run".
#pragma once

#include "host/commands/Command.hpp"
#include "host/commands/RunArguments.hpp"

namespace nivlo {

/// Shows the wallpaper until it is told to end: by SIGINT, SIGTERM, SIGHUP or over the control interface,
/// after a number of frames, or after a time. While another Nivlo runs in the session, hands the options over
/// to it and ends at once.
class RunCommand : public Command {
 public:
  /// Takes the options after the word "run" and without it: this is what the program does by default.
  explicit RunCommand(CLI::App& app);
  int run() const override;

 private:
  RunArguments options_;
};

}  // namespace nivlo
