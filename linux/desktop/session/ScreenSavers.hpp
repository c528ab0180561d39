// The desktop's screen lock, where the login manager does not tell.
#pragma once

#include <list>
#include <string>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/session/BackgroundReasons.hpp"

namespace nivlo {

/// Follows, on one connection, the screen savers that desktops offer under their several names. One that goes
/// away covers nothing any more. Main thread only.
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
