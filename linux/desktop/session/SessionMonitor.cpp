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
  /// One thing missing brings others with it, and the person can do the same about all of them.
  void report(const std::string& cause) {
    if (!std::exchange(reported_, true)) {
      NSLog(
          "session: a locked screen or a sleeping machine may go unnoticed, and the camera stays on then: "
          "%@. Nivlo goes on looking for D-Bus and logind",
          cause);
    }
  }

  bool reported_ = false;
  BackgroundReasons reasons_;
  std::optional<LoginSession> login_;
  std::optional<ScreenSavers> savers_;
  BusLink systemBus_{
      systemBusAddress(),
      {[this](GDBusConnection* connection) {
         login_.emplace(connection, reasons_, [this](const std::string& cause) { report(cause); });
       },
       [this] { login_.reset(); }, [this](const std::string& cause) { report("system bus: " + cause); }}};
  BusLink sessionBus_{
      sessionBusAddress(),
      {[this](GDBusConnection* connection) { savers_.emplace(connection, reasons_); },
       [this] { savers_.reset(); }, [this](const std::string& cause) { report("session bus: " + cause); }}};
};

}  // namespace

std::unique_ptr<SessionMonitor> makeSessionMonitor(std::function<void(bool)> moved) {
  return std::make_unique<BusSessionMonitor>(std::move(moved));
}

}  // namespace nivlo
