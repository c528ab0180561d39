// One command of the program, such as "nivlo scan".
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace nivlo {

/// A command: its options on the command line, and its work. A new command is a class derived
/// from this one and a line in CommandLine.cpp.
class Command {
 public:
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  /// Returns whether the command line, once parsed, names this command.
  bool chosen() const;

  /// Carries the command out, once the command line has been parsed. Returns the program's exit status.
  virtual int run() const = 0;

 protected:
  /// Adds the command to the program's command line; `app` must outlive it.
  Command(CLI::App& app, const std::string& name, const std::string& description);

  /// The command's part of the command line, to which a derived class adds its options.
  CLI::App& arguments() const { return *arguments_; }

 private:
  CLI::App* arguments_;
};

}  // namespace nivlo
