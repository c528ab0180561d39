// Follows whether the machine runs on its battery.
#pragma once

#include <functional>
#include <memory>

namespace nivlo {

/// Follows UPower for as long as it exists. The machine counts as plugged in until UPower says otherwise, and
/// while UPower cannot be reached.
class BatteryMonitor {
 public:
  virtual ~BatteryMonitor() = default;
};

/// `changed` is called at each change, from the main thread's GLib loop, and first if the machine runs on its
/// battery. UPower is not started for it. Make and destroy the monitor on the main thread, and do not destroy
/// it within the handler. Never null.
std::unique_ptr<BatteryMonitor> makeBatteryMonitor(std::function<void(bool onBattery)> changed);

}  // namespace nivlo
