#include "host/commands/InstallServiceCommand.hpp"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string>

#include <CLI/App.hpp>
#include <fmt/format.h>

#include "host/commands/LastingCheck.hpp"
#include "host/service/ConfiguredDesktops.hpp"
#include "host/service/InstalledService.hpp"
#include "host/service/LauncherTexts.hpp"
#include "host/service/ProgramToStart.hpp"
#include "host/service/SessionDesktop.hpp"

namespace nivlo {

namespace {

using Starts = SessionDesktop::Starts;

LaunchCommand commandFor(const ProgramToStart& program, const RunOptions& options) {
  LaunchCommand command{program.path, "run"};
  std::ranges::move(lastingArguments(options), std::back_inserter(command));
  return command;
}

std::string textOf(Launcher launcher, const LaunchCommand& command) {
  return launcher == Launcher::SystemdUnit ? unitText(command) : autostartText(command);
}

/// Returns a sentence about what would be done in this session.
std::string plan(const SessionDesktop& desktop, bool systemdStartsIt) {
  if (systemdStartsIt) {
    return "systemd runs this graphical session: 'nivlo install-service' writes the unit";
  }
  switch (desktop.starts) {
    case Starts::AutostartEntries:
      return fmt::format("{} runs autostart entries: 'nivlo install-service' writes the entry", desktop.name);
    case Starts::ConfigurationLines:
      return fmt::format("{} starts only what its configuration names: put its line there yourself",
                         desktop.name);
    case Starts::Unknown:
      break;
  }
  return "This session does not tell how it starts programs: 'nivlo install-service' writes the entry";
}

void print(Launcher launcher, const LaunchCommand& command) {
  std::cout << fmt::format("# {}\n{}\n", fileOf(launcher).string(), textOf(launcher, command));
}

void printAll(const LaunchCommand& command, const SessionDesktop& desktop, bool systemdStartsIt) {
  std::cout << fmt::format("# {}\n\n", plan(desktop, systemdStartsIt));
  print(Launcher::SystemdUnit, command);
  print(Launcher::AutostartEntry, command);
  for (const auto& configured : configuredDesktops()) {
    std::cout << fmt::format("# {}: {}\n{}\n", configured.name, fileOf(configured).string(),
                             configured.write(command));
  }
}

/// Nothing is installed: to change a configuration that a person wrote by hand is not for a program.
int askForLine(const ConfiguredDesktop& desktop, const LaunchCommand& command) {
  const auto file = fileOf(desktop);
  std::cerr << fmt::format(
      "nivlo: {} starts only what its configuration names, so nothing was installed. Put this line into "
      "{}:\n",
      desktop.name, file.string());
  std::cout << desktop.write(command) << '\n';
  if (desktop.standard && !std::filesystem::exists(file)) {
    std::cerr << fmt::format("That file does not exist yet. {} reads {} instead; copy it there first\n",
                             desktop.name, desktop.standard);
  }
  return 1;
}

std::string whoStartsIt(Launcher launcher, const SessionDesktop& desktop) {
  if (launcher == Launcher::SystemdUnit) {
    return "systemd will start Nivlo with the graphical session from now on.";
  }
  if (desktop.starts == Starts::AutostartEntries) {
    return fmt::format("{} will start Nivlo from now on.", desktop.name);
  }
  return "Desktops that run autostart entries will start Nivlo from now on. This session does not tell "
         "whether "
         "it does; if not, 'nivlo install-service --print' shows lines for its configuration.";
}

int installFor(const SessionDesktop& desktop, Launcher launcher, const LaunchCommand& command) {
  if (const auto error = install(launcher, textOf(launcher, command)); !error.empty()) {
    std::cerr << fmt::format("nivlo: {}\n", error);
    print(launcher, command);
    return 1;
  }
  std::cout << fmt::format("Wrote {}\n{} To start it now:\n  {}\n", fileOf(launcher).string(),
                           whoStartsIt(launcher, desktop),
                           launcher == Launcher::SystemdUnit ? "systemctl --user restart nivlo.service"
                                                             : shellLine(command) + " &");
  return 0;
}

void warn(const ProgramToStart& program, const std::string& note) {
  if (!program.installed) {
    std::cerr << fmt::format(
        "nivlo: {} lies in a build folder, and no Nivlo is installed. Nivlo will no longer start when that "
        "folder "
        "is moved or cleaned; install it with 'cmake --install', then run this again\n",
        program.path.string());
  }
  if (!note.empty()) {
    std::cerr << fmt::format("nivlo: {}\n", note);
  }
}

int remove() {
  const auto removed = uninstall();
  for (const auto& file : removed) {
    std::cout << fmt::format("Removed {}\n", file.string());
  }
  std::cout << (removed.empty() ? "There is nothing to remove: the desktop does not start Nivlo\n"
                                : "The desktop no longer starts Nivlo\n");
  return 0;
}

}  // namespace

InstallServiceCommand::InstallServiceCommand(CLI::App& app)
    : Command(app, "install-service", "Have the desktop start Nivlo with these options") {
  options_.addLastingTo(arguments());
  auto* print = arguments().add_flag("--print", print_,
                                     "Only print what would be installed, here and on other desktops");
  arguments().add_flag("--remove", remove_, "Undo the installation")->excludes(print);
  arguments().footer(
      "Installs a systemd user unit where systemd runs the graphical session, or an autostart entry where "
      "the\n"
      "desktop runs those. For sway, i3, Hyprland, river, labwc, niri and bspwm it prints the line to put "
      "into\n"
      "their configuration, and exits with status 1. Installing again replaces what was installed before.");
}

int InstallServiceCommand::run() const {
  if (remove_) {
    return remove();
  }
  const auto options = options_.options();
  const auto check = checkLasting(options);
  if (!check.refusal.empty()) {
    std::cerr << fmt::format("nivlo: {}\n", check.refusal);
    return 1;
  }
  const auto program = programToStart();
  const auto command = commandFor(program, options);
  const auto desktop = sessionDesktop();
  const bool systemdStartsIt = systemdRunsTheSession();
  warn(program, check.note);
  if (print_) {
    printAll(command, desktop, systemdStartsIt);
    return 0;
  }
  if (desktop.configured && !systemdStartsIt) {
    return askForLine(*desktop.configured, command);
  }
  return installFor(desktop, systemdStartsIt ? Launcher::SystemdUnit : Launcher::AutostartEntry, command);
}

}  // namespace nivlo
