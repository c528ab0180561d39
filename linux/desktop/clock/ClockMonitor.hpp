// Tells the frameworks when a day begins, the clock is set or the time zone changes.
#pragma once

#include <filesystem>
#include <memory>

namespace nivlo {

/// Posts UIApplicationSignificantTimeChangeNotification, for as long as it exists, when a day begins in local
/// time, when the clock is set, and when the time zone changes; the process's local time follows the new zone
/// already. Waking from sleep counts as setting the clock, because to the kernel's timers the clock has
/// jumped.
class ClockMonitor {
 public:
  virtual ~ClockMonitor() = default;
};

/// `zoneFile` is the file, or the link to it, that defines the system's time zone. Notifications are posted
/// from the main thread's GLib loop; nothing wakes up between them. Make and destroy the monitor on the main
/// thread, and do not destroy it within a notification. Never null.
std::unique_ptr<ClockMonitor> makeClockMonitor(const std::filesystem::path& zoneFile = "/etc/localtime");

}  // namespace nivlo
