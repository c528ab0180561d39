#include "host/commands/CommandLine.hpp"

#include "host/commands/AllCommands.hpp"

namespace nivlo {

namespace {

constexpr int kUsageError = 2;

}  // namespace

int runCommandLine(int argc, const char* const* argv) {
  AllCommands commands;
  try {
    commands.app().parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return commands.app().exit(error) == 0 ? 0 : kUsageError;
  }
  return commands.chosen().run();
}

}  // namespace nivlo
