// Makes the program the only Nivlo of its session, and lets others control it.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/control/ControlActions.hpp"
#include "host/control/ControlObject.hpp"
#include "host/control/Controls.hpp"
#include "host/loop/EventSource.hpp"
#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/bus/BusLink.hpp"
#include "linux/desktop/bus/SharedBus.hpp"

namespace nivlo {

/// Owns kControlName on the session bus as long as it exists. Without a bus the program works but cannot be
/// controlled, which is logged once; when a bus that went away is back, it is used again. Main thread only.
class ControlService {
 public:
  /// Calls `quit` when the program is asked to end.
  explicit ControlService(std::function<void()> quit);

  /// Returns whether another process owns the name, so that this one must not show a wallpaper. Runs the main
  /// loop until that is known, for three seconds at most. Without a bus, or an answer, the result is false.
  bool anotherIsRunning();

  /// Sets the wallpaper to control. It must be replaced, by null for none, before it is destroyed.
  void attach(WallpaperShow* show);
  /// Must be called when the wallpaper's status may have changed. What has changed by the time that the main
  /// loop gets round to it is then signalled at once.
  void statusChanged();

 private:
  enum class Place { Unknown, Only, Another };

  void connected(GDBusConnection* connection);
  void lost();
  void report(const std::string& cause);

  Place place_ = Place::Unknown;
  bool reported_ = false;
  bool willSignal_ = false;
  EventSource signalling_;
  Controls controls_;
  ControlActions actions_{controls_};
  std::optional<ControlObject> object_;
  std::optional<MethodCalls> calls_;
  std::optional<SharedBus> shared_;  // so that libraries that use it do not end the program with the bus
  BusLink bus_;
};

}  // namespace nivlo
