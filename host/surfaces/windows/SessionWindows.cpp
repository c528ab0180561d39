#include "host/surfaces/windows/SessionWindows.hpp"

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "host/surfaces/windows/HyprlandWindows.hpp"
#include "host/surfaces/windows/SwayWindows.hpp"

namespace nivlo {

namespace {

std::string textOf(const char* variable) {
  const char* value = std::getenv(variable);
  return value ? value : "";
}

}  // namespace

/// A session may name both, for example when it was started from the other compositor or when a service still
/// has the variable of an earlier session. Then the first one that answers is taken.
OpenWindowSource windowsOfSession() {
  std::vector<OpenWindowSource> candidates;
  if (auto path = textOf("SWAYSOCK"); !path.empty()) {
    candidates.emplace_back([path = std::move(path)](auto handlers, auto* error) {
      return SwayWindows::open(path, std::move(handlers), error);
    });
  }
  if (const auto instance = textOf("HYPRLAND_INSTANCE_SIGNATURE"); !instance.empty()) {
    candidates.emplace_back(
        [folder = textOf("XDG_RUNTIME_DIR") + "/hypr/" + instance](auto handlers, auto* error) {
          return HyprlandWindows::open(folder, std::move(handlers), error);
        });
  }
  if (candidates.empty()) {
    return nullptr;
  }
  return [candidates = std::move(candidates)](const WindowSource::Handlers& handlers, std::string* error) {
    std::unique_ptr<WindowSource> source;
    for (auto candidate = candidates.begin(); !source && candidate != candidates.end(); ++candidate) {
      source = (*candidate)(handlers, error);
    }
    return source;
  };
}

}  // namespace nivlo
