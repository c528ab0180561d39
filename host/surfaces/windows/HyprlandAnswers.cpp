#include "host/surfaces/windows/HyprlandAnswers.hpp"

#include <cmath>
#include <set>
#include <string>

#include "host/surfaces/windows/JsonRect.hpp"

namespace nivlo {

namespace {

using Json = nlohmann::json;

/// A monitor's size is told in its own pixels, before it is turned.
ScreenRect areaOf(const Json& monitor) {
  const double scale = std::max(monitor.value("scale", 1.0), 0.1);
  const int width = static_cast<int>(std::lround(lengthFrom(monitor.at("width")) / scale));
  const int height = static_cast<int>(std::lround(lengthFrom(monitor.at("height")) / scale));
  const bool quarterTurned = monitor.value("transform", 0) % 2 != 0;
  return {lengthFrom(monitor.at("x")), lengthFrom(monitor.at("y")), quarterTurned ? height : width,
          quarterTurned ? width : height};
}

/// The numbers of the workspaces that can be seen: one on each monitor, and perhaps a special one above it.
std::set<int> workspacesOn(const Json& monitors) {
  std::set<int> shown;
  for (const auto& monitor : monitors) {
    for (const auto* key : {"activeWorkspace", "specialWorkspace"}) {
      if (const auto workspace = monitor.find(key); workspace != monitor.end()) {
        shown.insert(workspace->at("id").get<int>());
      }
    }
  }
  return shown;
}

/// "visible" tells the shown window of a group from the others, since version 0.55.
bool isShown(const Json& window, const std::set<int>& workspaces) {
  const bool isHere =
      window.value("pinned", false) || workspaces.contains(window.at("workspace").at("id").get<int>());
  return isHere && window.at("mapped").get<bool>() && !window.value("hidden", false) &&
         window.value("visible", true);
}

/// Either bits, of which 2 stands for fullscreen and 1 for maximised; or, before version 0.42, a flag, with a
/// mode that is 0 for fullscreen.
bool isFullscreen(const Json& window) {
  const auto& state = window.at("fullscreen");
  return state.is_boolean() ? state.get<bool>() && window.value("fullscreenMode", 0) == 0
                            : (state.get<int>() & 2) != 0;
}

}  // namespace

std::optional<DesktopWindows> windowsInHyprland(std::string_view monitors, std::string_view clients) {
  try {
    DesktopWindows desktop;
    const auto outputs = Json::parse(monitors);
    const auto windows = Json::parse(clients);
    if (!outputs.is_array() || !windows.is_array()) {
      return std::nullopt;
    }
    for (const auto& monitor : outputs) {
      if (const auto area = areaOf(monitor); !isEmpty(area)) {
        desktop.outputs[monitor.at("name").get<std::string>()] = area;
      }
    }
    const auto workspaces = workspacesOn(outputs);
    for (const auto& window : windows) {
      if (isShown(window, workspaces)) {
        const auto& at = window.at("at");
        const auto& size = window.at("size");
        desktop.windows.push_back(
            {{lengthFrom(at.at(0)), lengthFrom(at.at(1)), lengthFrom(size.at(0)), lengthFrom(size.at(1))},
             isFullscreen(window)});
      }
    }
    return desktop;
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

}  // namespace nivlo
