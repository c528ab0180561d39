// A talk with the nivlo that runs in this session.
#pragma once

#include <chrono>
#include <string>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Every call waits for its answer, for seconds at most. Any thread.
class ControlClient {
 public:
  ControlClient();

  enum class Outcome { Done, Refused, NotRunning };
  struct Answer {
    Outcome outcome = Outcome::Done;
    Owned<GVariant, g_variant_unref> values;  ///< a tuple; null unless done
    std::string error;                        ///< a sentence for people; empty when done

    /// A number of what GetStatus answers; 0 where it is absent.
    int number(const char* key) const;
  };
  /// Calls a method of kControlInterface. Takes the arguments, a floating tuple or null.
  Answer call(const char* method, GVariant* arguments = nullptr) const;

  /// Waits until no nivlo runs any more. Returns false when the time is up.
  bool waitUntilGone(std::chrono::seconds timeout) const;

 private:
  Owned<GDBusConnection, g_object_unref> connection_;  // null without a bus
};

}  // namespace nivlo
