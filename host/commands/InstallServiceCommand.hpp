// "nivlo install-service".
#pragma once

#include "host/commands/Command.hpp"
#include "host/commands/RunArguments.hpp"

namespace nivlo {

/// Has the desktop start this program with the options of "nivlo run" that are given, or no longer start it.
class InstallServiceCommand : public Command {
 public:
  explicit InstallServiceCommand(CLI::App& app);
  int run() const override;

 private:
  RunArguments options_;
  bool print_ = false;
  bool remove_ = false;
};

}  // namespace nivlo
