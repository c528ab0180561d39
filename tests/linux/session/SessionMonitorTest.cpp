// The session monitor, with a login manager and screen savers that python-dbusmock mocks.
#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <gmock/gmock.h>

#include "linux/desktop/session/SessionMonitor.hpp"
#include "linux/handles/Owned.hpp"
#include "platform/Foundation/NSString+Format.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/support/LoopUntil.hpp"
#include "tests/support/MockedService.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo {
namespace {

using Names = std::vector<std::string>;

constexpr auto background = "background";
constexpr auto foreground = "foreground";

constexpr auto managerPath = "/org/freedesktop/login1";
constexpr auto sessionPath = "/org/freedesktop/login1/session/c1";
constexpr auto manager = "org.freedesktop.login1.Manager";
constexpr auto session = "org.freedesktop.login1.Session";

const char* truth(bool on) { return on ? "true" : "false"; }

class MockedLogin : public test::MockedService {
 public:
  explicit MockedLogin(const test::PrivateBus& bus)
      : MockedService(bus, "org.freedesktop.login1", {"--system", "--template", "logind"}) {
    EXPECT_TRUE(call(managerPath, kMock, "AddSession", "('c1', 'seat0', uint32 1000, 'me', true)"));
  }

  void lock() { call(sessionPath, session, "Lock", nullptr); }
  void unlock() { call(sessionPath, session, "Unlock", nullptr); }
  void setLockedHint(bool on) {
    call(sessionPath, session, "SetLockedHint", stringWithFormat("(%@,)", truth(on)).c_str());
  }
  void setActive(bool on) {
    call(sessionPath, kMock, "UpdateProperties",
         stringWithFormat("(%@, {'Active': <%@>})", quoted(session), truth(on)).c_str());
  }
  void prepareForSleep(bool on) {
    emit(managerPath, manager, "PrepareForSleep", "b", stringWithFormat("[<%@>]", truth(on)));
  }
  std::string inhibitors() {
    const auto list = call(managerPath, manager, "ListInhibitors", nullptr);
    const Owned<gchar, g_free> text(list ? g_variant_print(list.get(), FALSE) : nullptr);
    return text ? text.get() : "";
  }
  bool holdsBackSleep() { return inhibitors().find("'delay'") != std::string::npos; }
};

class SessionMonitorTest : public testing::Test {
 protected:
  static std::string addressOf(const test::PrivateBus& bus) {
    return *bus.environment().at("DBUS_SESSION_BUS_ADDRESS");
  }

  /// Waits for as many moves as are expected, and checks that they are these.
  void expectPosted(const Names& expected) {
    EXPECT_TRUE(test::loopUntil([&] { return posted_.size() >= expected.size(); }));
    EXPECT_EQ(posted_, expected);
    posted_.clear();
  }

  void start() {
    monitor_ = makeSessionMonitor([this](bool inForeground) {
      posted_.push_back(inForeground ? foreground : background);
      if (onPost_) {
        onPost_();
      }
    });
  }
  void startWith(MockedLogin& login) {
    start();
    ASSERT_TRUE(test::loopUntil([&] { return login.holdsBackSleep(); }));
    // Waits until the monitor follows the session. A state, unlike a signal, is not missed when it is set too
    // early.
    login.setLockedHint(true);
    expectPosted({background});
    login.setLockedHint(false);
    expectPosted({foreground});
  }

  LoggingMachine machine_;
  test::PrivateBus systemBus_, sessionBus_;
  test::ScopedEnvironment environment_{{{"DBUS_SYSTEM_BUS_ADDRESS", addressOf(systemBus_)},
                                        {"DBUS_SESSION_BUS_ADDRESS", addressOf(sessionBus_)},
                                        {"XDG_SESSION_ID", "c1"}}};
  Names posted_;
  std::function<void()> onPost_;
  std::unique_ptr<SessionMonitor> monitor_;
};

TEST_F(SessionMonitorTest, MissesAReasonThatTheLoginManagerTells) {
  MockedLogin login(systemBus_);
  startWith(login);
  const std::function<void(bool)> reasons[] = {
      [&](bool on) { on ? login.lock() : login.unlock(); },
      [&](bool on) { login.setLockedHint(on); },
      [&](bool on) { login.setActive(!on); },
      [&](bool on) { login.prepareForSleep(on); },
  };
  for (const auto& set : reasons) {
    SCOPED_TRACE(&set - reasons);
    set(true);
    set(true);
    expectPosted({background});
    set(false);
    expectPosted({foreground});
  }
  login.lock();
  login.setLockedHint(true);
  login.prepareForSleep(true);
  login.setLockedHint(false);
  login.setActive(false);
  login.prepareForSleep(false);
  login.setActive(true);
  expectPosted({background, foreground});
  EXPECT_EQ(machine_.log.count(), 0);
}

TEST_F(SessionMonitorTest, LetsTheMachineSleepBeforeTheCameraIsOff) {
  MockedLogin login(systemBus_);
  startWith(login);
  for (int night = 1; night <= 2; ++night) {
    bool heldBack = false;
    onPost_ = [&] { heldBack = login.holdsBackSleep(); };
    login.prepareForSleep(true);
    expectPosted({background});
    EXPECT_TRUE(heldBack);
    EXPECT_TRUE(test::loopUntil([&] { return !login.holdsBackSleep(); })) << login.inhibitors();
    onPost_ = nullptr;
    login.prepareForSleep(false);
    expectPosted({foreground});
    EXPECT_TRUE(test::loopUntil([&] { return login.holdsBackSleep(); }));
  }
  monitor_.reset();
  EXPECT_TRUE(test::loopUntil([&] { return !login.holdsBackSleep(); })) << "the lock was not given back";
}

TEST_F(SessionMonitorTest, MissesAScreenSaverOrRemembersADeadOne) {
  MockedLogin login(systemBus_);
  for (const std::string desktop : {"freedesktop", "gnome", "mate", "cinnamon"}) {
    SCOPED_TRACE(desktop);
    const auto name = "org." + desktop + ".ScreenSaver";
    const auto path = "/org/" + desktop + "/ScreenSaver";
    auto saver = std::make_unique<test::MockedService>(
        sessionBus_, name, std::vector<std::string>{"--session", name, path, name});
    const auto becomes = [&](bool on) {
      saver->emit(path, name, "ActiveChanged", "b", stringWithFormat("[<%@>]", truth(on)));
    };
    saver->answer(path, name, "GetActive", "", "b", "ret = True");
    start();
    expectPosted({background});
    becomes(false);
    expectPosted({foreground});
    becomes(true);
    expectPosted({background});
    saver.reset();
    expectPosted({foreground});
    monitor_.reset();
  }
}

}  // namespace
}  // namespace nivlo
