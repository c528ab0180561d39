// The desktops' screen savers, for desktops that do not tell the login manager about their lock.
#pragma once

#include <list>
#include <string>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/session/BackgroundReasons.hpp"

namespace nivlo {

/// Follows, on one connection to the session bus, the screen savers of several desktops, which have a name
/// each. A screen saver whose process ends covers the screen no more. Main thread only.
class ScreenSavers {
 public:
  ScreenSavers(GDBusConnection* connection, BackgroundReasons& reasons);

 private:
  class Saver {
   public:
    Saver(GDBusConnection* connection, BackgroundReasons& reasons, std::string name);

   private:
    void changed(bool there);
    void takeState(GVariant* values);

    BackgroundReasons& reasons_;
    std::string name_;
    MethodCalls calls_;
    SignalSubscription activeChanged_;
    ServiceWatch watch_;
  };

  std::list<Saver> savers_;
};

}  // namespace nivlo
