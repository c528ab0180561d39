#include "linux/desktop/clock/ClockMonitor.hpp"

#include "linux/desktop/clock/DayTimer.hpp"
#include "linux/desktop/clock/ZoneWatch.hpp"
#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/UIKit/UIApplication.hpp"

namespace nivlo {

namespace {

void tellFrameworks() {
  NSNotificationCenter::defaultCenter().postNotificationName(UIApplicationSignificantTimeChangeNotification);
}

class SystemClockMonitor : public ClockMonitor {
 public:
  explicit SystemClockMonitor(const std::filesystem::path& zoneFile)
      : zone_(zoneFile, [this] {
          timer_.arm();
          tellFrameworks();
        }) {}

 private:
  DayTimer timer_{tellFrameworks};
  ZoneWatch zone_;
};

}  // namespace

std::unique_ptr<ClockMonitor> makeClockMonitor(const std::filesystem::path& zoneFile) {
  return std::make_unique<SystemClockMonitor>(zoneFile);
}

}  // namespace nivlo
