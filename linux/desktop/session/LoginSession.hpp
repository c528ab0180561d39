// The state of the user's session, from the login manager.
#pragma once

#include <functional>
#include <list>
#include <string>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/session/BackgroundReasons.hpp"
#include "linux/desktop/session/SleepInhibitor.hpp"

namespace nivlo {

/// Follows logind, or elogind, on one connection to the system bus. While the login manager is gone, what it
/// said last stays in force, and when it is back it is asked again: a locked screen is not unlocked by a
/// daemon's death. Main thread only.
class LoginSession {
 public:
  /// `failed` is called with the cause whenever something is missing without which a lock or a sleep may go
  /// unnoticed.
  LoginSession(GDBusConnection* connection, BackgroundReasons& reasons,
               std::function<void(const std::string& cause)> failed);

 private:
  void follow();
  void findSession(const std::string& id);
  void followSession(const std::string& path);
  void takeStates(GVariant* properties);
  void followSleep();
  void setSleeping(bool sleeping);
  void takeInhibitor();

  GDBusConnection* connection_;
  BackgroundReasons& reasons_;
  std::function<void(const std::string&)> failed_;
  MethodCalls calls_;
  SleepInhibitor inhibitor_;
  std::list<SignalSubscription> subscriptions_;
  ServiceWatch watch_;
};

}  // namespace nivlo
