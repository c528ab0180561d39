#include "host/service/ConfiguredDesktops.hpp"

#include <algorithm>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <glib.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

constexpr std::string_view kPlain =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=./:,@%";

std::string doubled(const std::string& text, char character) {
  std::string result;
  for (const char c : text) {
    result.append(c == character ? 2 : 1, c);
  }
  return result;
}

// sway replaces variables even within quotes, and "$$" stands for the character itself.
std::string forSway(const LaunchCommand& command) { return "exec " + doubled(shellLine(command), '$'); }

// i3 would show the busy pointer for a minute, because a wallpaper never announces that it has started.
std::string forI3(const LaunchCommand& command) { return "exec --no-startup-id " + shellLine(command); }

// Hyprland begins a comment at "#" wherever it stands; "##" stands for the character itself.
std::string forHyprland(const LaunchCommand& command) {
  return "exec-once = " + doubled(shellLine(command), '#');
}

std::string forShellScript(const LaunchCommand& command) { return shellLine(command) + " &"; }

// niri starts the words themselves, without a shell. KDL's strings have two characters that need a backslash.
std::string forNiri(const LaunchCommand& command) {
  std::string line = "spawn-at-startup";
  for (const auto& word : command) {
    line += " \"";
    for (const char c : word) {
      line += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
    }
    line += '"';
  }
  return line;
}

constexpr ConfiguredDesktop kDesktops[] = {
    {"sway", "SWAYSOCK", "sway/config", "/etc/sway/config", forSway},
    {"i3", "I3SOCK", "i3/config", "/etc/i3/config", forI3},
    {"Hyprland", "HYPRLAND_INSTANCE_SIGNATURE", "hypr/hyprland.conf", nullptr, forHyprland},
    {"river", nullptr, "river/init", nullptr, forShellScript},
    {"labwc", "LABWC_PID", "labwc/autostart", "/etc/xdg/labwc/autostart", forShellScript},
    {"niri", "NIRI_SOCKET", "niri/config.kdl", nullptr, forNiri},
    {"bspwm", "BSPWM_SOCKET", "bspwm/bspwmrc", nullptr, forShellScript}};

}  // namespace

std::span<const ConfiguredDesktop> configuredDesktops() { return kDesktops; }

std::filesystem::path fileOf(const ConfiguredDesktop& desktop) {
  return std::filesystem::path(g_get_user_config_dir()) / desktop.file;
}

std::string shellLine(const LaunchCommand& command) {
  std::vector<std::string> words;
  for (const auto& word : command) {
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) {
      words.push_back(word);
    } else {
      const Owned<gchar, g_free> quoted(g_shell_quote(word.c_str()));
      words.emplace_back(quoted.get());
    }
  }
  return fmt::format("{}", fmt::join(words, " "));
}

}  // namespace nivlo
