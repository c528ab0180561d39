// The environment that toolkits need on a desktop without hardware.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

#include "tests/support/Environment.hpp"

namespace nivlo::test {

/// Makes AddressSanitizer record stacks the quick way. A toolkit allocates so often that the exact way takes
/// minutes.
inline std::string quickSanitizer() {
  const char* options = std::getenv("ASAN_OPTIONS");
  return std::string(options ? options : "") + ":fast_unwind_on_malloc=1";
}

/// Makes GTK programs clients of the Wayland display that draw in software and use no service of the real
/// session.
inline Environment softwareToolkit(const std::string& display) {
  return {{"WAYLAND_DISPLAY", display},    {"DISPLAY", std::nullopt}, {"GDK_BACKEND", "wayland"},
          {"GSK_RENDERER", "cairo"},       {"NO_AT_BRIDGE", "1"},     {"GTK_A11Y", "none"},
          {"GSETTINGS_BACKEND", "memory"}, {"GTK_USE_PORTAL", "0"},   {"ADW_DISABLE_PORTAL", "1"},
          {"XDG_SESSION_TYPE", "wayland"}, {"LC_ALL", "C.UTF-8"},     {"ASAN_OPTIONS", quickSanitizer()}};
}

}  // namespace nivlo::test
