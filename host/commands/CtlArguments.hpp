// The command line of "nivlo ctl".
#pragma once

#include <string>

#include <CLI/App.hpp>

#include "host/commands/CtlCommand.hpp"

namespace nivlo {

class CtlArguments {
 public:
  explicit CtlArguments(CLI::App& app);
  CtlArguments(const CtlArguments&) = delete;
  CtlArguments& operator=(const CtlArguments&) = delete;

  /// Whether the command line was for "ctl".
  bool chosen() const { return command_->parsed(); }
  const CtlOptions& options() const { return options_; }

 private:
  CLI::App* add(const std::string& name, const std::string& description, const char* method);

  CLI::App* command_;
  CtlOptions options_;
};

}  // namespace nivlo
