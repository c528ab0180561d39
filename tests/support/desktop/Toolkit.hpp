// A toolkit's environment on a desktop without hardware.
#pragma once

#include <string>

#include "tests/support/Environment.hpp"

namespace nivlo::test {

/// Makes GTK programs clients of the Wayland display, drawing in software and asking nobody else's services.
inline Environment softwareToolkit(const std::string& display) {
  return {{"WAYLAND_DISPLAY", display},    {"DISPLAY", std::nullopt}, {"GDK_BACKEND", "wayland"},
          {"GSK_RENDERER", "cairo"},       {"NO_AT_BRIDGE", "1"},     {"GTK_A11Y", "none"},
          {"GSETTINGS_BACKEND", "memory"}, {"GTK_USE_PORTAL", "0"},   {"ADW_DISABLE_PORTAL", "1"},
          {"XDG_SESSION_TYPE", "wayland"}, {"LC_ALL", "C.UTF-8"}};
}

}  // namespace nivlo::test
