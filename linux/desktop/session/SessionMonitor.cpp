#include "linux/desktop/session/SessionMonitor.hpp"

#include <optional>
#include <string>
#include <utility>

#include "linux/desktop/session/BackgroundReasons.hpp"
#include "linux/desktop/session/BusLink.hpp"
#include "linux/desktop/session/LoginSession.hpp"
#include "linux/desktop/session/ScreenSavers.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/UIKit/UIApplication.hpp"

namespace nivlo {

namespace {

void tellFrameworks(BackgroundReasons::Place place) {
  auto& center = NSNotificationCenter::defaultCenter();
  if (place == BackgroundReasons::Place::Background) {
    center.postNotificationName(UIApplicationDidEnterBackgroundNotification);
  } else {
    center.postNotificationName(UIApplicationWillEnterForegroundNotification);
    center.postNotificationName(UIApplicationDidBecomeActiveNotification);
  }
}

class BusSessionMonitor : public SessionMonitor {
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
  BackgroundReasons reasons_{tellFrameworks};
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

std::unique_ptr<SessionMonitor> makeSessionMonitor() { return std::make_unique<BusSessionMonitor>(); }

}  // namespace nivlo
