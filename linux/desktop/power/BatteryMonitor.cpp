#include "linux/desktop/power/BatteryMonitor.hpp"

#include <optional>
#include <string>
#include <utility>

#include "linux/desktop/bus/BusClient.hpp"
#include "linux/desktop/bus/BusLink.hpp"

namespace nivlo {

namespace {

constexpr auto kUPower = "org.freedesktop.UPower";
constexpr auto kUPowerPath = "/org/freedesktop/UPower";
constexpr auto kPropertiesOfUPower = "org.freedesktop.DBus.Properties";
constexpr auto kOnBattery = "OnBattery";

using Held = Owned<GVariant, g_variant_unref>;
using Handler = std::function<void(bool)>;

/// UPower's state on one connection to the bus.
class PowerSupply {
 public:
  PowerSupply(GDBusConnection* connection, Handler told)
      : told_(std::move(told)),
        calls_(connection, kUPower),
        propertiesChanged_(connection, {kUPower, kUPowerPath, kPropertiesOfUPower, "PropertiesChanged"},
                           [this](GVariant* values) { takeChange(values); }),
        watch_(connection, kUPower, [this](bool there) {
          calls_.dropAnswers();
          if (there) {
            ask();
          } else {
            told_(false);
          }
        }) {}

 private:
  void ask() {
    calls_.call({kUPowerPath, kPropertiesOfUPower, "Get"}, g_variant_new("(ss)", kUPower, kOnBattery),
                [this](const MethodCalls::Reply& reply) {
                  if (!reply.values || !g_variant_is_of_type(reply.values, G_VARIANT_TYPE("(v)"))) {
                    return;
                  }
                  const Held variant(g_variant_get_child_value(reply.values, 0));
                  const Held value(g_variant_get_variant(variant.get()));
                  if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN)) {
                    told_(g_variant_get_boolean(value.get()) != FALSE);
                  }
                });
  }

  void takeChange(GVariant* values) {
    if (!g_variant_is_of_type(values, G_VARIANT_TYPE("(sa{sv}as)"))) {
      return;
    }
    const Held properties(g_variant_get_child_value(values, 1));
    gboolean onBattery = FALSE;
    if (g_variant_lookup(properties.get(), kOnBattery, "b", &onBattery)) {
      told_(onBattery != FALSE);
    }
  }

  Handler told_;
  MethodCalls calls_;
  SignalSubscription propertiesChanged_;
  ServiceWatch watch_;
};

class UPowerMonitor : public BatteryMonitor {
 public:
  explicit UPowerMonitor(Handler changed) : changed_(std::move(changed)) {}

 private:
  void take(bool onBattery) {
    if (onBattery != std::exchange(onBattery_, onBattery)) {
      changed_(onBattery);
    }
  }

  Handler changed_;
  bool onBattery_ = false;
  std::optional<PowerSupply> supply_;
  BusLink bus_{systemBusAddress(),
               {[this](GDBusConnection* connection) {
                  supply_.emplace(connection, [this](bool onBattery) { take(onBattery); });
                },
                [this] {
                  supply_.reset();
                  take(false);
                },
                [](const std::string&) {}}};
};

}  // namespace

std::unique_ptr<BatteryMonitor> makeBatteryMonitor(std::function<void(bool)> changed) {
  return std::make_unique<UPowerMonitor>(std::move(changed));
}

}  // namespace nivlo
