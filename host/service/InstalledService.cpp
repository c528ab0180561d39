#include "host/service/InstalledService.hpp"

#include <fmt/format.h>
#include <gio/gio.h>

#include "host/service/LauncherTexts.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

constexpr auto kUnitName = "nivlo.service";
constexpr Launcher kLaunchers[] = {Launcher::SystemdUnit, Launcher::AutostartEntry};

/// Returns whether systemctl exists and succeeded.
bool systemctl(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), {"systemctl", "--user"});
  arguments.push_back(nullptr);
  const Owned<GSubprocess, g_object_unref> process(g_subprocess_newv(
      arguments.data(),
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE),
      nullptr));
  return process && g_subprocess_wait_check(process.get(), nullptr, nullptr) != FALSE;
}

/// Replaces the file in one step, so that nobody ever reads a part of it. Returns an error message, empty on
/// success.
std::string writeWhole(const std::filesystem::path& path, const std::string& text) {
  std::error_code unwritable;
  std::filesystem::create_directories(path.parent_path(), unwritable);
  GError* raw = nullptr;
  g_file_set_contents(path.c_str(), text.c_str(), static_cast<gssize>(text.size()), &raw);
  const Owned<GError, g_error_free> error(raw);
  return error ? error->message : "";
}

bool remove(Launcher launcher) {
  std::error_code absent;
  const auto file = fileOf(launcher);
  if (!std::filesystem::exists(file, absent)) {
    return false;
  }
  const bool isUnit = launcher == Launcher::SystemdUnit;
  if (isUnit) {
    systemctl({"disable", kUnitName});
  }
  const bool removed = std::filesystem::remove(file, absent);
  if (isUnit) {
    systemctl({"daemon-reload"});
  }
  return removed;
}

}  // namespace

bool systemdRunsTheSession() { return systemctl({"is-active", "--quiet", "graphical-session.target"}); }

std::filesystem::path fileOf(Launcher launcher) {
  const std::filesystem::path config = g_get_user_config_dir();
  return launcher == Launcher::SystemdUnit ? config / "systemd" / "user" / kUnitName
                                           : config / "autostart" / "nivlo.desktop";
}

std::string install(Launcher launcher, const std::string& text) {
  if (auto error = writeWhole(fileOf(launcher), text); !error.empty()) {
    return error;
  }
  if (launcher == Launcher::AutostartEntry) {
    remove(Launcher::SystemdUnit);
    return "";
  }
  remove(Launcher::AutostartEntry);
  const bool enabled = systemctl({"daemon-reload"}) && systemctl({"enable", kUnitName});
  return enabled
             ? ""
             : fmt::format("systemd could not enable the unit; to see why, run 'systemctl --user enable {}'",
                           kUnitName);
}

std::vector<std::filesystem::path> uninstall() {
  std::vector<std::filesystem::path> removed;
  for (const auto launcher : kLaunchers) {
    if (remove(launcher)) {
      removed.push_back(fileOf(launcher));
    }
  }
  return removed;
}

bool rememberWallpaper(const std::string& bundle, int preset) {
  for (const auto launcher : kLaunchers) {
    gchar* raw = nullptr;
    if (g_file_get_contents(fileOf(launcher).c_str(), &raw, nullptr, nullptr) == FALSE) {
      continue;
    }
    const Owned<gchar, g_free> text(raw);
    const auto changed = launcher == Launcher::SystemdUnit
                             ? unitWithWallpaper(text.get(), bundle, preset)
                             : autostartWithWallpaper(text.get(), bundle, preset);
    if (!writeWhole(fileOf(launcher), changed).empty()) {
      return false;
    }
    if (launcher == Launcher::SystemdUnit) {
      systemctl({"daemon-reload"});
    }
    return true;
  }
  return false;
}

}  // namespace nivlo
