// The desktop's colour scheme, with a portal that python-dbusmock mocks.
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "linux/desktop/appearance/ColorScheme.hpp"
#include "platform/Foundation/NSString+Format.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/LoopUntil.hpp"
#include "tests/support/MockedService.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo {
namespace {

using testing::ElementsAre;

constexpr auto kPortal = "org.freedesktop.portal.Desktop";
constexpr auto kPath = "/org/freedesktop/portal/desktop";
constexpr auto kSettings = "org.freedesktop.portal.Settings";

/// A template for dbusmock, so that the portal can answer as soon as it appears on the bus.
std::filesystem::path templateThatReads(const test::PrivateBus& bus, const std::string& value) {
  const auto path = bus.dataDirectory() / "portal.py";
  std::ofstream(path) << stringWithFormat(R"(
BUS_NAME = '%@'
MAIN_OBJ = '%@'
MAIN_IFACE = '%@'
SYSTEM_BUS = False
def load(mock, parameters):
    mock.AddMethod(MAIN_IFACE, 'Read', 'ss', 'v',
                   'ret = {("org.freedesktop.appearance", "color-scheme"): %@}[tuple(args)]')
)",
                                          kPortal, kPath, kSettings, value);
  return path;
}

class MockedPortal : public test::MockedService {
 public:
  /// `reading` is the Python value that Read returns for the setting.
  MockedPortal(const test::PrivateBus& bus, const std::string& reading)
      : MockedService(bus, kPortal, {"--session", "--template", templateThatReads(bus, reading)}) {}

  void change(const std::string& key, const std::string& value) {
    emit(kPath, kSettings, "SettingChanged", "ssv",
         "[<'org.freedesktop.appearance'>, <" + quoted(key) + ">, <" + value + ">]");
  }
};

class ColorSchemeTest : public testing::Test {
 protected:
  void start() {
    scheme_ = makeColorScheme([this](bool dark) { told_.emplace_back(dark ? "dark" : "light"); });
  }

  /// Waits for as many calls of the handler as are expected, and checks that they are these.
  void expectTold(const std::vector<std::string>& expected) {
    EXPECT_TRUE(test::loopUntil([&] { return told_.size() >= expected.size(); }));
    EXPECT_EQ(told_, expected);
    told_.clear();
  }

  LoggingMachine machine_;
  test::PrivateBus bus_;
  test::ScopedEnvironment environment_{bus_.environment()};
  std::vector<std::string> told_;
  std::unique_ptr<ColorScheme> scheme_;
};

TEST_F(ColorSchemeTest, MisreadsTheSettingOrTellsOfNoChange) {
  // Read wraps the number in two variants, but one must do. Unknown numbers mean no preference.
  for (const auto& [reading, told] : {std::pair{"dbus.UInt32(1, variant_level=2)", "dark"},
                                      {"dbus.UInt32(1, variant_level=1)", "dark"},
                                      {"dbus.UInt32(2, variant_level=2)", "light"},
                                      {"dbus.UInt32(0, variant_level=2)", "light"},
                                      {"dbus.UInt32(7, variant_level=2)", "light"}}) {
    SCOPED_TRACE(reading);
    MockedPortal portal(bus_, reading);
    start();
    expectTold({told});
    scheme_.reset();
  }
  MockedPortal portal(bus_, "dbus.UInt32(1, variant_level=2)");
  start();
  expectTold({"dark"});
  portal.change("color-scheme", "uint32 1");
  portal.change("contrast", "uint32 0");
  portal.change("color-scheme", "'light'");
  portal.change("color-scheme", "uint32 2");
  portal.change("color-scheme", "uint32 0");
  portal.change("color-scheme", "uint32 1");
  expectTold({"light", "dark"});
  EXPECT_EQ(machine_.log.count(), 0);
}

TEST_F(ColorSchemeTest, StartsAPortalOrMissesOneThatComesLater) {
  const auto started = bus_.dataDirectory() / "started";
  bus_.stopDaemon();
  const auto services = bus_.dataDirectory() / "dbus-1/services";
  std::filesystem::create_directories(services);
  std::ofstream(services / "portal.service")
      << "[D-BUS Service]\nName=" << kPortal << "\nExec=/usr/bin/touch " << started.native() << "\n";
  bus_.startDaemon();
  start();
  auto portal = std::make_unique<MockedPortal>(bus_, "dbus.UInt32(1, variant_level=2)");
  expectTold({"dark"});
  portal.reset();
  portal = std::make_unique<MockedPortal>(bus_, "dbus.UInt32(2, variant_level=2)");
  expectTold({"light"});
  portal.reset();
  bus_.stopDaemon();
  bus_.startDaemon();
  portal = std::make_unique<MockedPortal>(bus_, "dbus.UInt32(1, variant_level=2)");
  expectTold({"dark"});
  EXPECT_EQ(machine_.log.count(), 0);
  EXPECT_FALSE(std::filesystem::exists(started));
}

}  // namespace
}  // namespace nivlo
