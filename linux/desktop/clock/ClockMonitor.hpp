// Days that begin, clocks that are set, and time zones that change.
#pragma once

#include <filesystem>
#include <memory>

namespace nivlo {

/// Posts UIApplicationSignificantTimeChangeNotification, for as long as it exists, when a day begins in local
/// time, when the clock is set (waking from sleep counts as that, as the clock has jumped for this program),
/// and when the time zone changes. The process's local time follows the zone by then.
class ClockMonitor {
 public:
  virtual ~ClockMonitor() = default;
};

/// `zoneFile` is what the system's time zone is read from. Main thread only, as is the destruction, which
/// must not happen within the notification. Posts from the main thread's GLib loop; between changes nothing
/// wakes up.
std::unique_ptr<ClockMonitor> makeClockMonitor(const std::filesystem::path& zoneFile = "/etc/localtime");

}  // namespace nivlo
