// Foreground and background, on a login manager and screen savers that python-dbusmock plays.
#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <gmock/gmock.h>

#include "linux/desktop/session/SessionMonitor.hpp"
#include "linux/glib/Owned.hpp"
#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "platform/drivers/Drivers.hpp"
#include "tests/fakes/CountingLog.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

constexpr auto background = UIApplicationDidEnterBackgroundNotification;
constexpr auto foreground = UIApplicationWillEnterForegroundNotification;
constexpr auto active = UIApplicationDidBecomeActiveNotification;

constexpr auto mock = "org.freedesktop.DBus.Mock";
constexpr auto login = "org.freedesktop.login1";
constexpr auto managerPath = "/org/freedesktop/login1";
constexpr auto sessionPath = "/org/freedesktop/login1/session/c1";
constexpr auto session = "org.freedesktop.login1.Session";

bool eventually(const std::function<bool()>& condition) {
  return test::waitFor([&] {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    return condition();
  });
}

/// Plays a service on a private bus.
class MockedService {
 public:
  MockedService(const std::string& address, const std::string& name,
                const std::vector<std::string>& arguments)
      : name_(name),
        process_(merged({"/usr/bin/python3", "-m", "dbusmock"}, arguments),
                 {{"DBUS_SYSTEM_BUS_ADDRESS", address}, {"DBUS_SESSION_BUS_ADDRESS", address}}),
        bus_(g_dbus_connection_new_for_address_sync(
            address.c_str(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr)) {
    EXPECT_TRUE(test::waitFor([&] {
      return call("/", "org.freedesktop.DBus.Introspectable", "Introspect", nullptr) != nullptr;
    })) << process_.output();
  }

  Owned<GVariant, g_variant_unref> call(const char* path, const char* interface, const char* method,
                                        const char* arguments) {
    GVariant* values = arguments ? g_variant_new_parsed(arguments) : nullptr;
    return Owned<GVariant, g_variant_unref>(
        g_dbus_connection_call_sync(bus_.get(), name_.c_str(), path, interface, method, values, nullptr,
                                    G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr));
  }

 private:
  static std::vector<std::string> merged(std::vector<std::string> first,
                                         const std::vector<std::string>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
  }

  std::string name_;
  test::ChildProcess process_;
  Owned<GDBusConnection, g_object_unref> bus_;
};

class MockedLogin {
 public:
  explicit MockedLogin(const std::string& address)
      : service_(address, login, {"--system", "--template", "logind"}) {
    EXPECT_TRUE(service_.call(managerPath, mock, "AddSession", "('c1', 'seat0', uint32 1000, 'me', true)"));
  }

  void lock() { service_.call(sessionPath, session, "Lock", nullptr); }
  void unlock() { service_.call(sessionPath, session, "Unlock", nullptr); }
  void setLockedHint(bool on) {
    service_.call(sessionPath, session, "SetLockedHint", on ? "(true,)" : "(false,)");
  }
  void setActive(bool on) {
    service_.call(sessionPath, mock, "UpdateProperties",
                  on ? "('org.freedesktop.login1.Session', {'Active': <true>})"
                     : "('org.freedesktop.login1.Session', {'Active': <false>})");
  }
  void prepareForSleep(bool on) {
    service_.call(managerPath, mock, "EmitSignal",
                  on ? "('org.freedesktop.login1.Manager', 'PrepareForSleep', 'b', [<true>])"
                     : "('org.freedesktop.login1.Manager', 'PrepareForSleep', 'b', [<false>])");
  }
  std::string inhibitors() {
    const auto list = service_.call(managerPath, "org.freedesktop.login1.Manager", "ListInhibitors", nullptr);
    const Owned<gchar, g_free> text(list ? g_variant_print(list.get(), FALSE) : nullptr);
    return text ? text.get() : "";
  }
  bool holdsBackSleep() { return inhibitors().find("'delay'") != std::string::npos; }

 private:
  MockedService service_;
};

class SessionMonitorTest : public testing::Test {
 protected:
  SessionMonitorTest() {
    Drivers withSink;
    withSink.logSink = std::make_unique<test::CountingLog>(logLines_);
    installDrivers(std::move(withSink));
    for (const char* name : {background, foreground, active}) {
      NSNotificationCenter::defaultCenter().addObserver(
          observer_,
          [this](const NSNotification& notification) {
            posted_.push_back(notification.name);
            if (onPost_) onPost_();
          },
          name);
    }
  }
  ~SessionMonitorTest() override {
    monitor_.reset();
    installDrivers({});
  }

  static std::string addressOf(const test::PrivateBus& bus) {
    return *bus.environment().at("DBUS_SESSION_BUS_ADDRESS");
  }

  /// Waits for the next notifications, and that they are these and no others.
  void expectPosted(const Names& expected) {
    EXPECT_TRUE(eventually([&] { return posted_.size() >= expected.size(); }));
    EXPECT_EQ(posted_, expected);
    posted_.clear();
  }

  void start() { monitor_ = makeSessionMonitor(); }
  void startWith(MockedLogin& manager) {
    start();
    ASSERT_TRUE(eventually([&] { return manager.holdsBackSleep(); }));
    // A state, unlike a signal, is not missed however early it is set.
    manager.setLockedHint(true);
    expectPosted({background});
    manager.setLockedHint(false);
    expectPosted({foreground, active});
  }

  std::atomic<int> logLines_{0};
  test::PrivateBus systemBus_, sessionBus_;
  test::ScopedEnvironment environment_{{{"DBUS_SYSTEM_BUS_ADDRESS", addressOf(systemBus_)},
                                        {"DBUS_SESSION_BUS_ADDRESS", addressOf(sessionBus_)},
                                        {"XDG_SESSION_ID", "c1"}}};
  Names posted_;
  std::function<void()> onPost_;
  std::shared_ptr<int> observer_ = std::make_shared<int>();
  std::unique_ptr<SessionMonitor> monitor_;
};

TEST_F(SessionMonitorTest, GoesToTheBackgroundForEveryReasonTheLoginManagerTells) {
  MockedLogin manager(addressOf(systemBus_));
  startWith(manager);
  const std::function<void(bool)> reasons[] = {
      [&](bool on) { on ? manager.lock() : manager.unlock(); },
      [&](bool on) { manager.setLockedHint(on); },
      [&](bool on) { manager.setActive(!on); },
      [&](bool on) { manager.prepareForSleep(on); },
  };
  for (const auto& set : reasons) {
    SCOPED_TRACE(&set - reasons);
    set(true);
    set(true);
    expectPosted({background});
    set(false);
    expectPosted({foreground, active});
  }
  manager.lock();
  manager.setLockedHint(true);
  manager.prepareForSleep(true);
  manager.setLockedHint(false);
  manager.setActive(false);
  manager.prepareForSleep(false);
  manager.setActive(true);
  expectPosted({background, foreground, active});
  EXPECT_EQ(logLines_, 0);
}

TEST_F(SessionMonitorTest, TheMachineSleepsAfterTheCameraIsOffAndNotBefore) {
  MockedLogin manager(addressOf(systemBus_));
  startWith(manager);
  for (int night = 1; night <= 2; ++night) {
    bool heldBack = false;
    onPost_ = [&] { heldBack = manager.holdsBackSleep(); };
    manager.prepareForSleep(true);
    expectPosted({background});
    EXPECT_TRUE(heldBack);
    EXPECT_TRUE(eventually([&] { return !manager.holdsBackSleep(); })) << manager.inhibitors();
    onPost_ = nullptr;
    manager.prepareForSleep(false);
    expectPosted({foreground, active});
    EXPECT_TRUE(eventually([&] { return manager.holdsBackSleep(); }));
  }
  monitor_.reset();
  EXPECT_TRUE(eventually([&] { return !manager.holdsBackSleep(); })) << "the lock outlives the monitor";
}

TEST_F(SessionMonitorTest, FollowsScreenSaversAndForgetsOneThatDies) {
  MockedLogin manager(addressOf(systemBus_));
  for (const std::string desktop : {"freedesktop", "gnome", "mate", "cinnamon"}) {
    SCOPED_TRACE(desktop);
    const auto name = "org." + desktop + ".ScreenSaver";
    const auto path = "/org/" + desktop + "/ScreenSaver";
    auto saver = std::make_unique<MockedService>(addressOf(sessionBus_), name,
                                                 std::vector<std::string>{"--session", name, path, name});
    const auto becomes = [&](const std::string& state) {
      saver->call(path.c_str(), mock, "EmitSignal",
                  ("('" + name + "', 'ActiveChanged', 'b', [<" + state + ">])").c_str());
    };
    saver->call(path.c_str(), mock, "AddMethod",
                ("('" + name + "', 'GetActive', '', 'b', 'ret = True')").c_str());
    start();
    expectPosted({background});
    becomes("false");
    expectPosted({foreground, active});
    becomes("true");
    expectPosted({background});
    saver.reset();
    expectPosted({foreground, active});
    monitor_.reset();
  }
}

TEST_F(SessionMonitorTest, ADeadBusOpensNoLockedScreenAndIsUsedAgain) {
  auto manager = std::make_unique<MockedLogin>(addressOf(systemBus_));
  manager->setLockedHint(true);
  start();
  expectPosted({background});
  systemBus_.stopDaemon();
  EXPECT_TRUE(eventually([&] { return logLines_ > 0; }));
  EXPECT_THAT(posted_, ElementsAre());
  manager.reset();
  systemBus_.startDaemon();
  manager = std::make_unique<MockedLogin>(addressOf(systemBus_));
  expectPosted({foreground, active});
  manager->lock();
  expectPosted({background});
  manager.reset();
  manager = std::make_unique<MockedLogin>(addressOf(systemBus_));
  expectPosted({foreground, active});
  EXPECT_TRUE(eventually([&] { return manager->holdsBackSleep(); }));
  EXPECT_EQ(logLines_, 1);
}

TEST_F(SessionMonitorTest, WithoutAnyBusItStaysInTheForegroundAndSaysSoOnce) {
  systemBus_.stopDaemon();
  sessionBus_.stopDaemon();
  start();
  EXPECT_TRUE(eventually([&] { return logLines_ > 0; }));
  monitor_.reset();
  start();
  sessionBus_.startDaemon();
  systemBus_.startDaemon();
  MockedLogin manager(addressOf(systemBus_));
  EXPECT_TRUE(eventually([&] { return manager.holdsBackSleep(); }));
  EXPECT_THAT(posted_, ElementsAre());
  EXPECT_EQ(logLines_, 2) << "one line for each of the monitors";
}

}  // namespace
}  // namespace nivlo
