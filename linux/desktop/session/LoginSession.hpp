// The user's session, as the login manager sees it.
#pragma once

#include <functional>
#include <list>
#include <string>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/session/BackgroundReasons.hpp"
#include "linux/desktop/session/SleepInhibitor.hpp"

namespace nivlo {

/// Follows logind on one connection. Whatever it last said stays true while it is away, and is asked anew
/// when it is back: a locked screen does not open because a daemon died. Main thread only.
class LoginSession {
 public:
  /// `failed` is called whenever something that the monitoring needs is not there.
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
