#include "host/commands/InstallServiceCommand.hpp"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string>

#include <CLI/App.hpp>
#include <fmt/format.h>
#include <glib.h>

#include "host/bundle/BundleLoader.hpp"
#include "host/service/InstalledService.hpp"
#include "host/service/LauncherTexts.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

LaunchCommand commandFor(const RunOptions& options) {
  LaunchCommand command{std::filesystem::read_symlink("/proc/self/exe"), "run"};
  std::ranges::move(lastingArguments(options), std::back_inserter(command));
  return command;
}

std::string textOf(Launcher launcher, const LaunchCommand& command) {
  return launcher == Launcher::SystemdUnit ? unitText(command) : autostartText(command);
}

void print(Launcher launcher, const LaunchCommand& command) {
  std::cout << fmt::format("# {}\n{}", fileOf(launcher).string(), textOf(launcher, command));
}

std::string lineThatStartsItNow(Launcher launcher, const LaunchCommand& command) {
  if (launcher == Launcher::SystemdUnit) {
    return "systemctl --user restart nivlo.service";
  }
  std::string line;
  for (const auto& word : command) {
    const Owned<gchar, g_free> quoted(g_shell_quote(word.c_str()));
    line += fmt::format("{} ", quoted.get());
  }
  return line + "&";
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
  auto* print = arguments().add_flag("--print", print_, "Only print what would be installed");
  arguments().add_flag("--remove", remove_, "Undo the installation")->excludes(print);
  arguments().footer(
      "Installs a systemd user unit where systemd runs the graphical session, an autostart entry elsewhere.\n"
      "Installing again replaces what was installed before.");
}

int InstallServiceCommand::run() const {
  if (remove_) {
    return remove();
  }
  const auto options = options_.options();
  std::string error;
  const auto bundle = openWallpaperBundle(options.bundle, &error);
  if (bundle) {
    error = whyImpossible(options.show, *bundle);
  }
  if (!error.empty()) {
    std::cerr << fmt::format("nivlo: {}\n", error);
    return 1;
  }
  const auto command = commandFor(options);
  if (print_) {
    print(Launcher::SystemdUnit, command);
    std::cout << '\n';
    print(Launcher::AutostartEntry, command);
    return 0;
  }
  const auto launcher = suitableLauncher();
  error = install(launcher, textOf(launcher, command));
  if (!error.empty()) {
    std::cerr << fmt::format("nivlo: {}\n", error);
    print(launcher, command);
    return 1;
  }
  std::cout << fmt::format("Wrote {}\nThe desktop will start Nivlo from now on. To start it now:\n  {}\n",
                           fileOf(launcher).string(), lineThatStartsItNow(launcher, command));
  return 0;
}

}  // namespace nivlo
