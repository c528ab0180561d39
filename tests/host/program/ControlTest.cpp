// One Nivlo in a session: controlled, and started a second time.
#include <glib.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/host/program/Nivlo.hpp"
#include "tests/support/MockedService.hpp"
#include "tests/support/PrivateBus.hpp"
#include "tests/support/TestBundle.hpp"

namespace nivlo::test {
namespace {

using testing::AllOf;
using testing::Eq;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

class ControlTest : public testing::Test {
 protected:
  Environment session() const {
    auto environment = bus_.environment();
    environment["DBUS_SYSTEM_BUS_ADDRESS"] = environment["DBUS_SESSION_BUS_ADDRESS"];
    return environment;
  }

  /// Runs the program until it ends with this status, and returns all its output.
  std::string run(const Words& arguments, int status, const Environment& changes = {}) {
    Nivlo program(arguments, merged(session(), changes));
    EXPECT_THAT(program.waitForExit(), Eq(status)) << program.output();
    return program.output();
  }
  nlohmann::json status() {
    return nlohmann::json::parse(run({"ctl", "status", "--json"}, 0), nullptr, false);
  }

  PrivateBus bus_;
  const Words offscreen_{"--surface=offscreen", "--source=back=demo", "--source=front=demo", "--qr=off"};
};

TEST_F(ControlTest, EachCommandTakesEffectOnTheStatusAndTheCamera) {
  Nivlo program(offscreen_, session());
  ASSERT_TRUE(program.waitForLine("camera demo:back opened"));
  run({"ctl", "pause"}, 0);
  EXPECT_TRUE(program.waitForLine("camera demo:back closed"));
  EXPECT_THAT(run({"ctl", "status"}, 0), HasSubstr("paused"));
  run({"ctl", "preset", "2"}, 0);
  run({"ctl", "scan", "off"}, 0);
  EXPECT_TRUE(status()["camera"].is_null());
  run({"ctl", "resume"}, 0);
  EXPECT_TRUE(program.waitForLine("camera demo:front opened")) << "preset 2, chosen during the pause";
  EXPECT_EQ(status()["preset"], 2);
  EXPECT_EQ(status()["scanning"], false);
  run({"ctl", "swap"}, 0);
  EXPECT_EQ(status()["camera"]["position"], "back");
  EXPECT_THAT(run({"ctl", "preset", "7"}, 1), HasSubstr("Nivlo has 4 presets"));
  outputOf({"gdbus", "call", "--session", "--dest=org.nivlo.Wallpaper", "--object-path=/org/nivlo/Wallpaper",
            "--method=org.gtk.Actions.Activate", "scanning", "[]", "{}"},
           session());
  EXPECT_EQ(status()["scanning"], true);
  run({"ctl", "quit"}, 0);
  EXPECT_THAT(program.waitForExit(), Eq(0));
  EXPECT_THAT(run({"ctl", "status"}, 3), HasSubstr("not running"));
}

TEST_F(ControlTest, WhileADialogIsOpenASwapOpensNoOtherAndScanningStaysOffWhenItIsTurnedOff) {
  const TemporaryDirectory directory;
  const auto source = [&](const std::string& side) {
    writeCodePicture(directory.path() / side, "QRCode", side);
    return "--source=" + side + "=file:" + (directory.path() / side).string();
  };
  Nivlo program({"--surface=offscreen", source("back"), source("front")}, session());
  ASSERT_TRUE(program.waitForLine("Get a Barcode with content: back"));
  run({"ctl", "swap"}, 0);
  EXPECT_FALSE(program.waitForLine("Get a Barcode", std::chrono::seconds(2)))
      << "a dialog on top of a dialog";
  run({"ctl", "scan", "off"}, 0);
  program.write("0\n");
  ASSERT_TRUE(program.waitForLine("Cancelled"));
  EXPECT_FALSE(program.waitForLine("Get a Barcode", std::chrono::seconds(2))) << "the answer turned it on";
  EXPECT_EQ(status()["scanning"], false);
  run({"ctl", "scan", "on"}, 0);
  EXPECT_TRUE(program.waitForLine("Get a Barcode with content: front"));
}

TEST_F(ControlTest, ASecondStartPassesItsOptionsOnAndACrashDoesNotBlockTheNext) {
  Nivlo first(offscreen_, session());
  ASSERT_TRUE(first.waitForLine("opened"));
  const auto said = run({"--preset", "3", "--camera", "front", "--source", "back=none"}, 0);
  EXPECT_THAT(said, AllOf(HasSubstr(std::to_string(first.pid())), HasSubstr("it now shows preset 3"),
                          HasSubstr("--source=back=none was ignored")));
  EXPECT_EQ(status()["preset"], 3);
  EXPECT_EQ(status()["camera"]["position"], "front");
  first.kill();
  Nivlo next(offscreen_, session());
  EXPECT_TRUE(next.waitForLine("opened"));
}

TEST_F(ControlTest, PropertiesSayWhatIsSoAndEachChangeIsSignalledOnce) {
  Nivlo program(offscreen_, session());
  ASSERT_TRUE(program.waitForLine("first picture"));
  const auto property = [this](const std::string& name) {
    return outputOf(
        {"gdbus", "call", "--session", "--dest=org.nivlo.Wallpaper", "--object-path=/org/nivlo/Wallpaper",
         "--method=org.freedesktop.DBus.Properties.Get", "org.nivlo.Wallpaper1", name},
        session());
  };
  for (const auto& [name, value] : {std::pair("State", "'shown'"),
                                    {"Wallpaper", "'Nivlo'"},
                                    {"Preset", "1"},
                                    {"Presets", "4"},
                                    {"Paused", "false"},
                                    {"Scanning", "'off'"},
                                    {"CameraState", "'delivering'"},
                                    {"CameraPosition", "'back'"}}) {
    EXPECT_EQ(property(name), std::string("(<") + value + ">,)\n") << name;
  }
  ChildProcess monitor({"gdbus", "monitor", "--session", "--dest=org.nivlo.Wallpaper"}, session());
  monitor.expectLine("is owned by");
  const auto after = [&](const Words& arguments, const std::string& change) {
    run(arguments, 0);
    const auto line = monitor.waitForLine(change);
    return line.value_or(monitor.output());
  };
  EXPECT_THAT(after({"ctl", "pause"}, "'State': <'paused'>"),
              AllOf(HasSubstr("'Paused': <true>"), HasSubstr("'CameraState': <'off'>")));
  run({"ctl", "pause"}, 0);
  EXPECT_THAT(after({"ctl", "scan", "on"}, "'Scanning'"), HasSubstr("<'idle'>"));
  EXPECT_THAT(after({"ctl", "resume"}, "'CameraState': <'delivering'>"), HasSubstr("'Scanning': <'on'>"));
  EXPECT_THAT(after({"ctl", "swap"}, "'CameraPosition'"), HasSubstr("'CameraPosition': <'front'>"));
  EXPECT_THAT(after({"ctl", "preset", "3"}, "'Preset'"),
              AllOf(HasSubstr("<3>"), HasSubstr("'Scanning': <'off'>"), Not(HasSubstr("Wallpaper'"))));
  const auto signals = monitor.output();
  EXPECT_EQ(signals.find("'Paused': <true>"), signals.rfind("'Paused': <true>")) << signals;
}

TEST_F(ControlTest, ItOutlivesTheBusAndIsReachableAgainOnceTheBusIsBack) {
  Nivlo program(offscreen_, session());
  ASSERT_TRUE(program.waitForLine("opened"));
  {
    // The service has another name on the bus since its version 0.20, which GLib knows since 2.80.
    const bool hasNewName = glib_check_version(2, 80, 0) == nullptr;
    const ChildProcess daemon({"/usr/bin/python3", "-m", "dbusmock", "--template",
                               hasNewName ? "upower_power_profiles_daemon" : "power_profiles_daemon",
                               "--parameters", R"({"ActiveProfile": "power-saver"})"},
                              session());
    EXPECT_TRUE(program.waitForLine("codes are looked for less often"));
  }
  EXPECT_TRUE(program.waitForLine("as often as usual"));
  bus_.stopDaemon();
  EXPECT_TRUE(program.waitForLine("'nivlo ctl' cannot reach"));
  bus_.startDaemon();
  EXPECT_TRUE(waitFor([&] { return Nivlo({"ctl", "status"}, session()).waitForExit() == 0; }));
  EXPECT_THAT(program.terminate(), Eq(0));
}

TEST_F(ControlTest, OnItsBatteryItSlowsDownOrPausesUntilItIsPluggedIn) {
  for (const auto& [option, state, words] : {std::tuple{"--on-battery=slow", "slowed", "shown, slowed while"},
                                             {"--on-battery=pause", "paused", "paused while the machine"}}) {
    SCOPED_TRACE(option);
    auto arguments = offscreen_;
    arguments.emplace_back(option);
    Nivlo program(arguments, session());
    ASSERT_TRUE(program.waitForLine("camera demo:back opened"));
    EXPECT_FALSE(status().contains("battery"));
    {
      const MockedService power(
          bus_, "org.freedesktop.UPower",
          {"--system", "--template", "upower", "--parameters", R"({"OnBattery": true})"});
      ASSERT_TRUE(program.waitForLine("power: on battery"));
      const auto now = status();
      EXPECT_EQ(now["battery"], state);
      EXPECT_EQ(now["camera"].is_null(), state == std::string("paused"));
      EXPECT_THAT(run({"ctl", "status"}, 0), HasSubstr(words));
    }
    EXPECT_TRUE(program.waitForLine("power: plugged in again"));
    EXPECT_FALSE(status().contains("battery"));
    EXPECT_FALSE(status()["camera"].is_null());
  }
}

TEST_F(ControlTest, AnotherProgramUnderItsNameNeitherCrashesCtlNorReachesTheTerminal) {
  constexpr auto kPath = "/org/nivlo/Wallpaper";
  constexpr auto kInterface = "org.nivlo.Wallpaper1";
  MockedService other(bus_, "org.nivlo.Wallpaper", {"--session", "org.nivlo.Wallpaper", kPath, kInterface});
  other.answer(kPath, kInterface, "Pause", "", "", "raise Exception(chr(27) + chr(93) + chr(10))");
  EXPECT_THAT(run({"ctl", "pause"}, 1), AllOf(HasSubstr("\\x1b]"), testing::Not(HasSubstr("\x1b"))));
  other.answer(kPath, kInterface, "Swap", "", "s", "ret = chr(27)");
  EXPECT_THAT(run({"ctl", "swap"}, 1), HasSubstr("expected"));
  for (const auto& [type, value] : {std::pair{"", "None"}, {"s", "chr(27)"}, {"as", "[]"}, {"i", "1"}}) {
    other.answer(kPath, kInterface, "GetStatus", "", type, std::string("ret = ") + value);
    run({"ctl", "status"}, 1);
    run({"ctl", "status", "--json"}, 1);
    run({"--preset", "1"}, 1);
  }
  for (const std::string value : {"dbus.Int32(1)", "chr(27)"}) {
    other.answer(kPath, kInterface, "GetStatus", "", "a{sv}",
                 "ret = {key: " + value +
                     R"( for key in "wallpaper preset frames age95 camera scanning paused battery awaited )"
                     R"(foreground visible animating".split()})");
    EXPECT_THAT(run({"ctl", "status"}, 0), testing::Not(HasSubstr("\x1b")));
    run({"ctl", "status", "--json"}, 0);
  }
}

TEST_F(ControlTest, ItShowsNoMorePicturesThanAllowed) {
  auto arguments = offscreen_;
  arguments.emplace_back("--fps=2");
  Nivlo program(arguments, session());
  ASSERT_TRUE(program.waitForLine("first picture"));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(waitFor([&] { return status()["frames"].get<int>() >= 4; }));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1400));
  EXPECT_THAT(run({"--fps=0"}, 2), HasSubstr("from 1 to 240"));
  EXPECT_THAT(run({"--fps=241"}, 2), HasSubstr("from 1 to 240"));
}

TEST_F(ControlTest, AnotherWallpaperTakesTheShownOnesPlaceAndOneThatCannotLeavesIt) {
  const auto wallpapers = bus_.dataDirectory() / "nivlo" / "wallpapers";
  const auto paint = writeBundle(wallpapers, "Paint", "Paint", NIVLO_TEST_WALLPAPERS);
  writeBundle(wallpapers, "Throwing", "Throwing", NIVLO_TEST_WALLPAPERS);
  // Over D-Bus, waiting for words in the answer.
  const auto setWallpaper = [&](const std::string& wallpaper, int preset, const std::string& answer) {
    ChildProcess call(
        {"gdbus", "call", "--session", "--dest=org.nivlo.Wallpaper", "--object-path=/org/nivlo/Wallpaper",
         "--method=org.nivlo.Wallpaper1.SetWallpaper", wallpaper, std::to_string(preset)},
        session());
    call.waitForExit();
    EXPECT_THAT(call.output(), HasSubstr(answer));
  };
  Nivlo program(offscreen_, session());
  ASSERT_TRUE(program.waitForLine("camera demo:back opened"));
  setWallpaper(paint, 2, "()");
  EXPECT_TRUE(program.waitForLine("camera demo:back closed"));
  EXPECT_TRUE(program.waitForLine("paint: animating"));
  auto now = status();
  EXPECT_EQ(now["wallpaper"], "Paint");
  EXPECT_EQ(now["bundle"], paint.string());
  EXPECT_EQ(now["preset"], 2);
  EXPECT_FALSE(now.contains("scanning"));
  EXPECT_THAT(run({"ctl", "status"}, 0), AllOf(HasSubstr("Paint, shown"), HasSubstr("none in use"),
                                               HasSubstr("does not read codes"), Not(HasSubstr("behind"))));
  EXPECT_THAT(run({"ctl", "scan", "on"}, 1), HasSubstr("Paint does not read codes"));
  EXPECT_THAT(run({"ctl", "swap"}, 1), HasSubstr("Paint has no camera to choose"));
  setWallpaper("Throwing", 1, "throws: not today");
  setWallpaper("/none.bundle", 1, "Info.plist");
  setWallpaper("unheard-of", 1, "nor an installed wallpaper");
  EXPECT_THAT(run({"--bundle", "paint", "--preset", "3"}, 1), HasSubstr("Paint has 2 presets"));
  now = status();
  EXPECT_EQ(now["wallpaper"], "Paint");
  EXPECT_EQ(now["preset"], 2);
  EXPECT_THAT(run({"--bundle", "nivlo", "--camera", "front"}, 0),
              HasSubstr("it now shows Nivlo, uses the front camera"));
  EXPECT_TRUE(program.waitForLine("paint: still"));
  EXPECT_TRUE(program.waitForLine("paint: gone"));
  EXPECT_TRUE(program.waitForLine("camera demo:front opened"));
  EXPECT_THAT(program.terminate(), Eq(0));
}

TEST_F(ControlTest, AWallpaperIsToldWhetherTheDesktopIsDarkAndWhenThatChanges) {
  constexpr auto kPath = "/org/freedesktop/portal/desktop";
  constexpr auto kSettings = "org.freedesktop.portal.Settings";
  MockedService portal(bus_, "org.freedesktop.portal.Desktop",
                       {"--session", "org.freedesktop.portal.Desktop", kPath, kSettings});
  portal.answer(kPath, kSettings, "Read", "ss", "v", "ret = dbus.UInt32(1, variant_level=1)");
  const auto paint = writeBundle(bus_.dataDirectory(), "Paint", "Paint", NIVLO_TEST_WALLPAPERS);
  Nivlo program({"--bundle", paint, "--surface", "offscreen"}, session());
  EXPECT_TRUE(program.waitForLine("paint: variant 1")) << program.output();
  EXPECT_TRUE(waitFor([&] { return program.output().find("paint: animating") != std::string::npos; }))
      << "before or after that";
  portal.emit(kPath, kSettings, "SettingChanged", "ssv",
              "[<'org.freedesktop.appearance'>, <'color-scheme'>, <<uint32 2>>]");
  EXPECT_TRUE(program.waitForLine("paint: variant 0")) << program.output();
  EXPECT_THAT(program.terminate(), Eq(0));
}

}  // namespace
}  // namespace nivlo::test
