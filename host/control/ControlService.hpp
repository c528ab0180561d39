// The program as the one wallpaper of its session, which others can control.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/control/ControlActions.hpp"
#include "host/control/ControlObject.hpp"
#include "host/control/Controls.hpp"
#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/bus/BusLink.hpp"
#include "linux/desktop/bus/SharedBus.hpp"

namespace nivlo {

/// Holds kControlName on the session bus while it lives. A bus that is absent or goes away is looked for
/// again, and the log says so once; the program can only not be controlled meanwhile. Main thread only.
class ControlService {
 public:
  /// `quit` is called when the program is asked to end.
  explicit ControlService(std::function<void()> quit);

  /// Whether another program holds the name, and this one must leave. Runs the main loop until that is known,
  /// for seconds at most; without a bus there is no other.
  bool anotherIsRunning();

  /// The wallpaper to control from now on; null for none.
  void attach(WallpaperShow* show) { controls_.attach(show); }

 private:
  enum class Place { Unknown, Only, Another };

  void connected(GDBusConnection* connection);
  void lost();
  void report(const std::string& cause);

  Place place_ = Place::Unknown;
  bool reported_ = false;
  Controls controls_;
  ControlActions actions_{controls_};
  std::optional<ControlObject> object_;
  std::optional<MethodCalls> calls_;
  std::optional<SharedBus> shared_;  // the desktop's libraries use it, sooner or later
  BusLink bus_;
};

}  // namespace nivlo
