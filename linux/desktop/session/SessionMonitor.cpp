#include "linux/desktop/session/SessionMonitor.hpp"

#include <optional>
#include <string>
#include <utility>

#include "linux/desktop/bus/BusLink.hpp"
#include "linux/desktop/session/BackgroundReasons.hpp"
#include "linux/desktop/session/LoginSession.hpp"
#include "linux/desktop/session/ScreenSavers.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

class BusSessionMonitor : public SessionMonitor {
 public:
  explicit BusSessionMonitor(std::function<void(bool)> moved)
      : reasons_([moved = std::move(moved)](BackgroundReasons::Place place) {
          moved(place == BackgroundReasons::Place::Foreground);
        }) {}

 private:
  /// Logs the first cause only: one missing service brings other failures with it, all with the same remedy.
  void report(const std::string& cause) {
    if (!std::exchange(reported_, true)) {
      NSLog(
          "session: the camera may stay on while the screen is locked or the machine sleeps: %@; "
          "trying again when D-Bus and logind are back",
          cause);
    }
  }

  bool reported_ = false;
  BackgroundReasons reasons_;
  std::optional<LoginSession> login_;
  std::optional<ScreenSavers> savers_;
  BusLink systemBus_{systemBusAddress(),
                     {[this](GDBusConnection* connection) {
                        login_.emplace(connection, reasons_,
                                       [this](const std::string& cause) { report(cause); });
                      },
                      [this] { login_.reset(); },
                      [this](const std::string& cause) { report("cannot reach the system bus: " + cause); }}};
  BusLink sessionBus_{
      sessionBusAddress(),
      {[this](GDBusConnection* connection) { savers_.emplace(connection, reasons_); },
       [this] { savers_.reset(); },
       [this](const std::string& cause) { report("cannot reach the session bus: " + cause); }}};
};

}  // namespace

std::unique_ptr<SessionMonitor> makeSessionMonitor(std::function<void(bool)> moved) {
  return std::make_unique<BusSessionMonitor>(std::move(moved));
}

}  // namespace nivlo
