#include "host/surfaces/PresentOutputs.hpp"

#include <cstdlib>

#include "host/surfaces/wayland/WaylandConnection.hpp"
#include "host/surfaces/x11/X11Connection.hpp"
#include "host/surfaces/x11/X11Monitors.hpp"

namespace nivlo {

namespace {

using Names = std::vector<std::string>;

Names waylandOutputs() {
  std::string unreachable;
  Names names;
  if (const auto connection = WaylandConnection::open(&unreachable)) {
    for (const auto& output : connection->outputs()) {
      if (!output->name().empty()) {
        names.push_back(output->name());
      }
    }
  }
  return names;
}

Names x11Outputs() {
  std::string unreachable;
  Names names;
  if (const auto connection = X11Connection::open(&unreachable)) {
    for (const auto& monitor : X11Monitors(*connection).list()) {
      names.push_back(monitor.name);
    }
  }
  return names;
}

bool isGiven(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

}  // namespace

std::optional<Names> presentOutputs() {
  Names names;
  if (isGiven("WAYLAND_DISPLAY")) {
    names = waylandOutputs();
  }
  if (names.empty() && isGiven("DISPLAY")) {
    names = x11Outputs();
  }
  return names.empty() ? std::nullopt : std::optional(names);
}

}  // namespace nivlo
