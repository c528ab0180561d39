#include "host/commands/Command.hpp"

#include <CLI/App.hpp>

namespace nivlo {

Command::Command(CLI::App& app, const std::string& name, const std::string& description)
    : arguments_(app.add_subcommand(name, description)) {}

bool Command::chosen() const { return arguments_->parsed(); }

}  // namespace nivlo
