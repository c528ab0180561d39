#include "host/service/SessionDesktop.hpp"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <sstream>
#include <string_view>

#include <glib.h>

namespace nivlo {

namespace {

using Starts = SessionDesktop::Starts;

// The names that these desktops register for XDG_CURRENT_DESKTOP or use as their session's name.
constexpr const char* kAutostarting[] = {
    "GNOME",      "GNOME-Classic", "GNOME-Flashback", "ubuntu", "KDE",      "plasma", "plasmawayland",
    "plasmax11",  "XFCE",          "xubuntu",         "MATE",   "LXQt",     "LXDE",   "Cinnamon",
    "X-Cinnamon", "Budgie",        "budgie-desktop",  "Unity",  "Pantheon", "Deepin", "DDE",
    "UKUI",       "Enlightenment"};

std::string valueOf(const char* variable) {
  const char* value = variable ? std::getenv(variable) : nullptr;
  return value ? value : "";
}

bool same(std::string_view first, const std::string& second) {
  return g_ascii_strcasecmp(std::string(first).c_str(), second.c_str()) == 0;
}

SessionDesktop named(const std::string& name) {
  const auto desktops = configuredDesktops();
  const auto configured =
      std::ranges::find_if(desktops, [&](const auto& desktop) { return same(desktop.name, name); });
  if (configured != desktops.end()) {
    return {std::string(configured->name), Starts::ConfigurationLines, &*configured};
  }
  const bool autostarts =
      std::ranges::any_of(kAutostarting, [&](const char* desktop) { return same(desktop, name); });
  return {name, autostarts ? Starts::AutostartEntries : Starts::Unknown};
}

}  // namespace

SessionDesktop sessionDesktop() {
  SessionDesktop unknown;
  for (const char* variable : {"XDG_CURRENT_DESKTOP", "XDG_SESSION_DESKTOP", "DESKTOP_SESSION"}) {
    std::istringstream names(valueOf(variable));  // the desktop itself first, then those that it resembles
    for (std::string name; std::getline(names, name, ':');) {
      auto desktop = named(name);
      if (desktop.starts != Starts::Unknown) {
        return desktop;
      }
      if (unknown.name.empty()) {
        unknown = std::move(desktop);
      }
    }
  }
  for (const auto& desktop : configuredDesktops()) {
    if (!valueOf(desktop.variable).empty()) {
      return {std::string(desktop.name), Starts::ConfigurationLines, &desktop};
    }
  }
  return unknown;
}

}  // namespace nivlo
