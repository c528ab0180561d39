// The battery monitor beside a UPower that python-dbusmock mocks.
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "linux/desktop/power/BatteryMonitor.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/LoopUntil.hpp"
#include "tests/support/MockedService.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo {
namespace {

class MockedPower : public test::MockedService {
 public:
  MockedPower(const test::PrivateBus& bus, bool onBattery)
      : MockedService(bus, "org.freedesktop.UPower",
                      {"--system", "--template", "upower", "--parameters",
                       onBattery ? R"({"OnBattery": true})" : R"({"OnBattery": false})"}) {}

  void change(const std::string& property, const std::string& value) {
    EXPECT_TRUE(call("/org/freedesktop/UPower", kMock, "UpdateProperties",
                     ("('org.freedesktop.UPower', {'" + property + "': <" + value + ">})").c_str()));
  }
};

TEST(BatteryMonitor, TellsOfEachChangeAndTakesAMissingUPowerForAPlug) {
  const test::PrivateBus bus;
  auto environment = bus.environment();
  environment["DBUS_SYSTEM_BUS_ADDRESS"] = environment["DBUS_SESSION_BUS_ADDRESS"];
  const test::ScopedEnvironment scoped(environment);
  std::vector<std::string> told;
  const auto monitor =
      makeBatteryMonitor([&](bool onBattery) { told.emplace_back(onBattery ? "battery" : "plug"); });
  const auto expectTold = [&](const std::vector<std::string>& expected) {
    EXPECT_TRUE(test::loopUntil([&] { return told.size() >= expected.size(); }));
    EXPECT_EQ(told, expected);
    told.clear();
  };
  auto power = std::make_unique<MockedPower>(bus, true);
  expectTold({"battery"});
  power->change("LidIsClosed", "true");
  power->change("OnBattery", "true");
  power->change("OnBattery", "false");
  power->change("OnBattery", "true");
  expectTold({"plug", "battery"});
  power.reset();
  expectTold({"plug"});
  power = std::make_unique<MockedPower>(bus, false);
  power->change("OnBattery", "true");
  expectTold({"battery"});
}

}  // namespace
}  // namespace nivlo
