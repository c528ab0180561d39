#include "host/commands/InstallServiceCommand.hpp"

#include <filesystem>
#include <iostream>
#include <string_view>

#include <fmt/format.h>
#include <glib.h>

#include "host/service/InstalledService.hpp"
#include "host/service/LauncherTexts.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

/// The desktop starts the program in a directory of its own choice.
std::string withAbsolutePath(const std::string& argument) {
  for (const std::string_view marker : {"--bundle=", "=file:", "=script:"}) {
    if (const auto at = argument.find(marker); at != std::string::npos) {
      const auto path = at + marker.size();
      return argument.substr(0, path) + std::filesystem::absolute(argument.substr(path)).string();
    }
  }
  return argument;
}

LaunchCommand commandFor(const InstallServiceOptions& options) {
  LaunchCommand command{std::filesystem::read_symlink("/proc/self/exe"), "run",
                        fmt::format("--preset={}", options.preset)};
  for (const auto& argument : options.arguments) {
    command.push_back(withAbsolutePath(argument));
  }
  return command;
}

std::string textOf(Launcher launcher, const LaunchCommand& command) {
  return launcher == Launcher::SystemdUnit ? unitText(command) : autostartText(command);
}

void print(Launcher launcher, const LaunchCommand& command) {
  std::cout << fmt::format("# {}\n{}", fileOf(launcher).string(), textOf(launcher, command));
}

std::string toStartNow(Launcher launcher, const LaunchCommand& command) {
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
    std::cout << fmt::format("removed {}\n", file.string());
  }
  std::cout << (removed.empty() ? "The desktop does not start Nivlo; there is nothing to remove\n"
                                : "The desktop does not start Nivlo any more\n");
  return 0;
}

}  // namespace

int runInstallService(const InstallServiceOptions& options) {
  if (options.remove) {
    return remove();
  }
  const auto command = commandFor(options);
  if (options.print) {
    print(Launcher::SystemdUnit, command);
    std::cout << '\n';
    print(Launcher::AutostartEntry, command);
    return 0;
  }
  const auto launcher = suitableLauncher();
  if (const auto error = install(launcher, textOf(launcher, command)); !error.empty()) {
    std::cerr << fmt::format("nivlo: {}\n", error);
    print(launcher, command);
    return 1;
  }
  std::cout << fmt::format("wrote {}\nNivlo starts with the desktop from now on. To start it now:\n  {}\n",
                           fileOf(launcher).string(), toStartNow(launcher, command));
  return 0;
}

}  // namespace nivlo
