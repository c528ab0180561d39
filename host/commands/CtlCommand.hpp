// "nivlo ctl".
#pragma once

#include <optional>
#include <string>

#include <glib.h>

#include "host/commands/Command.hpp"

namespace nivlo {

/// Asks the Nivlo that is running in this session. The exit status is 0 if it did what was asked, 1 if it
/// refused, 3 if none is running.
class CtlCommand : public Command {
 public:
  explicit CtlCommand(CLI::App& app);
  int run() const override;

 private:
  CLI::App& add(const std::string& name, const std::string& description, const char* method);
  GVariant* argumentsOfCall() const;

  std::string method_;            // of kControlInterface
  std::optional<int> preset_;     // for SetPreset
  std::optional<bool> scanning_;  // for SetScanning
  bool json_ = false;             // how GetStatus is printed
};

}  // namespace nivlo
