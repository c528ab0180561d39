// Calls the Nivlo that is running in this session.
#pragma once

#include <chrono>
#include <string>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// A connection to the session bus for its own use. Blocks during each call, for five seconds at most. May be
/// used on any thread.
class ControlClient {
 public:
  /// Connects. Without a bus, every call has the outcome NotRunning.
  ControlClient();

  enum class Outcome { Done, Refused, NotRunning };
  struct Answer {
    Outcome outcome = Outcome::Done;
    Owned<GVariant, g_variant_unref> values;  ///< a tuple of the method's type; null unless Done
    std::string error;  ///< a sentence for users, safe to print in a terminal; empty if Done

    /// Returns an integer from the answer to GetStatus; 0 if it is absent.
    int number(const char* key) const;
    /// Returns a string from the answer to GetStatus; empty if it is absent.
    std::string text(const char* key) const;
  };
  /// Calls a method of kControlInterface. `arguments` is a floating tuple, which the call takes over, or
  /// null.
  Answer call(const char* method, GVariant* arguments = nullptr) const;

  /// Blocks until no Nivlo is running. Returns false if one still is after `timeout`.
  bool waitUntilGone(std::chrono::seconds timeout) const;

 private:
  Owned<GDBusConnection, g_object_unref> connection_;  // null without a bus
};

}  // namespace nivlo
