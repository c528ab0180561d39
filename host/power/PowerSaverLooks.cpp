#include "host/power/PowerSaverLooks.hpp"

#include <algorithm>
#include <atomic>
#include <chrono>

#include <gio/gio.h>

#include "linux/desktop/bus/SharedBus.hpp"
#include "linux/handles/Owned.hpp"
#include "platform/Foundation/Dispatch.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kSavingInterval{400};

class PowerSaverLooks : public LookRule {
 public:
  PowerSaverLooks() : profile_(g_power_profile_monitor_dup_default()) {
    changed_ = g_signal_connect(profile_.get(), "notify::power-saver-enabled", G_CALLBACK(onChange), this);
    follow();
  }
  ~PowerSaverLooks() override { g_signal_handler_disconnect(profile_.get(), changed_); }

  std::chrono::milliseconds lookInterval(std::chrono::milliseconds usual) const override {
    return saves_ ? std::max(kSavingInterval, usual) : usual;
  }

 private:
  static void onChange(GPowerProfileMonitor*, GParamSpec*, gpointer self) {
    static_cast<PowerSaverLooks*>(self)->follow();
  }

  void follow() {
    const bool saves = g_power_profile_monitor_get_power_saver_enabled(profile_.get()) != FALSE;
    if (saves != saves_.exchange(saves)) {
      NSLog(saves ? "codes: the machine saves power, so codes are looked for less often"
                  : "codes: the machine no longer saves power, so codes are looked for as often as usual");
    }
  }

  std::atomic<bool> saves_{false};
  SharedBus bus_{G_BUS_TYPE_SYSTEM};  // keeps a lost bus of profile_ from ending the process
  Owned<GPowerProfileMonitor, g_object_unref> profile_;
  gulong changed_ = 0;
};

}  // namespace

std::shared_ptr<const LookRule> savingPower() {
  return ownedByMainThread<const LookRule>(std::make_unique<PowerSaverLooks>());
}

}  // namespace nivlo
