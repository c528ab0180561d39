// The program as a user at a terminal meets it, without a camera.
#include <gmock/gmock.h>
#include <sys/resource.h>

#include "linux/camera/ImageFile.hpp"
#include "tests/host/program/Nivlo.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/TestBundle.hpp"
#include "tests/support/pictures/PictureFile.hpp"

namespace nivlo::test {

namespace {

using testing::Eq;
using testing::HasSubstr;
using testing::Not;

TEST(ProgramTest, WrongUsageIsExplainedAndEndsWithStatus2) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{"--preset", "0"}, "'0' is not a whole number from 1"},
      {{"--seconds", "1s"}, "'1s' is not a number above 0"},
      {{"--seconds", "inf"}, "up to 4000000"},
      {{"ctl", "scan", "yes"}, "'yes' is not one of {on,off}"},
      {{"--source", "back=camera"}, "pipewire:NODE"},
      {{"--source", "left=demo"}, "back=SOURCE or front=SOURCE"},
      {{"--turn", "back=45"}, "90, 180, 270 or mirror"},
      {{"--turn", "mirror"}, "back=TURN or front=TURN"},
      {{"--size", "12"}, "WIDTHxHEIGHT"},
      {{"--size", "0x5"}, "1 to 16384"},
      {{"--accelerometer", "shake"}, "script:FILE"},
      {{"--surface", "wall"}, "{auto,wayland,x11,window,offscreen}"},
      {{"scan"}, "FILE"},
      {{"nonsense"}, "nonsense"}};
  for (const auto& [arguments, hint] : cases) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    Nivlo program(arguments);
    EXPECT_THAT(program.waitForExit(), Eq(2));
    EXPECT_THAT(program.output(), HasSubstr(hint));
  }
}

TEST(ProgramTest, WhatCannotBeUsedIsNamedWithTheCause) {
  const TemporaryDirectory directory;
  const auto script = directory.write("script", "# seconds, x, y, z\n0.5, 0, 0, 1\n0.4, 0, 0, 1\n");
  Nivlo decreasing({"--source", "back=demo", "--accelerometer", "script:" + script.string()});
  EXPECT_THAT(decreasing.waitForExit(), Eq(1));
  EXPECT_THAT(decreasing.output(), HasSubstr("script:3:"));
  Nivlo noPreset({"--source", "back=demo", "--preset", "5"});
  EXPECT_THAT(noPreset.waitForExit(), Eq(1));
  EXPECT_THAT(noPreset.output(),
              HasSubstr("Nivlo has 4 presets; there is no preset 5. 'nivlo presets' lists them"));
  Nivlo missing({"--source", "back=file:" + (directory.path() / "none.png").string()});
  EXPECT_THAT(missing.waitForExit(), Eq(1));
  EXPECT_THAT(missing.output(), HasSubstr("none.png"));
  Nivlo unwritable({"--source", "back=demo", "--frames", "1", "--qr", "off", "--snapshot",
                    (directory.path() / "none" / "wall.png").string()});
  EXPECT_THAT(unwritable.waitForExit(), Eq(1));
  EXPECT_THAT(unwritable.output(), HasSubstr("wall.png"));
}

TEST(ProgramTest, WithoutADisplayThatAnswersItEndsSoThatTheDesktopStartsItAgain) {
  const auto refused = [](const Environment& environment) {
    Nivlo program({"--source", "back=demo", "--qr", "off"}, environment);
    EXPECT_THAT(program.waitForExit(), Eq(1)) << program.output();
    EXPECT_THAT(program.output(), Not(HasSubstr("opened"))) << "nobody could have seen the camera's picture";
    return program.output();
  };
  EXPECT_THAT(refused({{"WAYLAND_DISPLAY", "wayland-none"}}),
              HasSubstr("cannot connect to a Wayland compositor"));
  EXPECT_THAT(refused({{"DISPLAY", ":9999"}}), HasSubstr("cannot connect to an X11 display"));
  EXPECT_THAT(refused({{"WAYLAND_DISPLAY", "wayland-none"}, {"DISPLAY", ":9999"}}),
              testing::AllOf(HasSubstr("Wayland compositor"), HasSubstr("cannot connect to an X11 display")));
  EXPECT_THAT(
      refused({{"NIVLO_WITHOUT_DISPLAY", std::nullopt}}),
      testing::AllOf(HasSubstr("neither WAYLAND_DISPLAY nor DISPLAY"), HasSubstr("--surface offscreen")));
  Nivlo asked({"--surface", "offscreen", "--source", "back=demo", "--qr", "off", "--frames", "1"},
              {{"WAYLAND_DISPLAY", "wayland-none"}, {"NIVLO_WITHOUT_DISPLAY", std::nullopt}});
  EXPECT_THAT(asked.waitForExit(), Eq(0)) << asked.output();
}

TEST(ProgramTest, ABundleThatDoesNotFitIsRefusedWithTheReason) {
  const TemporaryDirectory directory;
  const auto refused = [&](const std::string& className, const std::string& executable) {
    const auto bundle = writeBundle(directory.path(), "Test", className, NIVLO_WRONG_BUNDLES, executable);
    Nivlo program({"presets", "--bundle", bundle.string()});
    EXPECT_THAT(program.waitForExit(), Eq(1));
    return program.output();
  };
  EXPECT_THAT(refused("Older", "test.so"), HasSubstr("was built for version 1"));
  EXPECT_THAT(refused("Stranger", "test.so"), HasSubstr("not a wallpaper class"));
  EXPECT_THAT(refused("Alias", "test.so"), HasSubstr("exports Other"));
  EXPECT_THAT(refused("Missing", "test.so"), HasSubstr("holds no class Missing"));
  EXPECT_THAT(refused("Older", "none.so"), HasSubstr("none.so"));
  EXPECT_THAT(refused("Older", "../test.so"), HasSubstr("CFBundleExecutable"));
  EXPECT_THAT(refused("", "test.so"), HasSubstr("NSPrincipalClass"));
  Nivlo none({"presets", "--bundle", (directory.path() / "None.bundle").string()});
  EXPECT_THAT(none.waitForExit(), Eq(1));
  EXPECT_THAT(none.output(), HasSubstr("Info.plist"));
}

TEST(ProgramTest, WithoutPipeWireTheDemoIsShownAndScanningContinuesAfterEachAnswer) {
  const TemporaryDirectory directory;
  const auto snapshot = directory.path() / "wall.png";
  Nivlo program({"--surface", "offscreen", "--alerts", "terminal", "--size", "640x360", "--snapshot",
                 snapshot.string()});
  ASSERT_TRUE(program.waitForLine("demo scenes stand in"));
  ASSERT_TRUE(program.waitForLine("picture: "));
  ASSERT_TRUE(program.answer("0) Cancel", 0));
  ASSERT_TRUE(program.waitForLine("Cancelled"));
  ASSERT_TRUE(program.waitForLine("Get a", std::chrono::seconds(40))) << "the next code of the demo";
  EXPECT_THAT(program.terminate(), Eq(0)) << "with a dialog on the screen";
  EXPECT_EQ(readPicture(snapshot).width, 640);
}

TEST(ProgramTest, TheTurnOfASideIsThatOfItsPictureAndFrontCamerasAreMirroredTheOtherWay) {
  const TemporaryDirectory directory;
  const auto picture = directory.path() / "quadrants.png";
  const auto snapshot = directory.path() / "wall.png";
  std::vector<std::uint8_t> pixels(160 * 120 * 4, 255);  // white, but for a red quarter at the top left
  for (int i = 0; i < 160 * 60; ++i) {
    if (i % 160 < 80) {
      std::fill_n(pixels.begin() + i * 4, 2, std::uint8_t{0});
    }
  }
  writePNG(picture, pixels.data(), 160, 120, 160 * 4);
  const auto redIsAt = [&](const std::string& side, const std::string& turn, int x, int y) {
    Nivlo program({"--source", side + "=file:" + picture.string(), "--camera", side, "--turn",
                   side + "=" + turn, "--surface", "offscreen", "--size", "160x120", "--frames", "1",
                   "--snapshot", snapshot.string()});
    EXPECT_THAT(program.waitForExit(), Eq(0));
    return isNear(readPicture(snapshot).at(x, y), {255, 0, 0}, 6);
  };
  EXPECT_TRUE(redIsAt("back", "180", 140, 100));
  EXPECT_TRUE(redIsAt("back", "mirror", 140, 20));
  EXPECT_TRUE(redIsAt("front", "mirror", 20, 20));
}

TEST(ProgramTest, HostileTextNeverReachesTheTerminalUnescaped) {
  const TemporaryDirectory directory;
  const auto picture = directory.path() / "code.png";
  writeCodePicture(picture, "QRCode", "a\x1b]0;title\a\xe2\x80\xae://b");
  Nivlo program({"--source", "back=file:" + picture.string(), "--source", "front=none"});
  ASSERT_TRUE(program.answer("1) Open Link", 1));
  EXPECT_TRUE(program.waitForLine("The text is not a valid link")) << "which the wallpaper does not say";
  const auto output = program.output();
  EXPECT_THAT(output, HasSubstr(R"(Get an URL link: a\x1b]0;title\x07\u202e://b)"));
  EXPECT_EQ(output.find('\x1b'), std::string::npos);
  EXPECT_THAT(program.terminate(), Eq(0));
}

TEST(ProgramTest, ACodeIsCopiedExactlyAndThenConfirmed) {
  const TemporaryDirectory directory;
  const auto picture = directory.path() / "code.png";
  writeCodePicture(picture, "EAN13", "4006381333931");
  Nivlo program({"--source", "back=file:" + picture.string()});
  ASSERT_TRUE(program.answer("Get a Barcode with content: 4006381333931", 1));
  ASSERT_TRUE(program.answer("== Copy Succ ==", 0));
  EXPECT_TRUE(waitFor(
      [&] { return program.output().find("\x1b]52;c;NDAwNjM4MTMzMzkzMQ==\a") != std::string::npos; }));
  EXPECT_THAT(program.terminate(), Eq(0));
}

TEST(ProgramTest, WithoutInputOneCodeAfterTheOtherIsPrinted) {
  const TemporaryDirectory directory;
  const auto source = [&](const std::string& side) {
    writeCodePicture(directory.path() / side, "QRCode", side);
    return "--source=" + side + "=file:" + (directory.path() / side).string();
  };
  const auto shakes = directory.write("shakes", "3, 2, 0, 0\n8, 2, 0, 0\n");
  Nivlo program({source("back"), source("front"), "--accelerometer=script:" + shakes.string()});
  program.closeInput();
  for (const char* side : {"back", "front"}) {
    EXPECT_TRUE(program.waitForLine(std::string("Get a Barcode with content: ") + side)) << program.output();
    EXPECT_TRUE(program.waitForLine("Cancelled"));
  }
  EXPECT_THAT(program.terminate(), Eq(0));
  EXPECT_EQ(directory.read(program.logDirectory() / "log.txt").find("cancelled by the system"),
            std::string::npos);
}

TEST(ProgramTest, InTheBackgroundOfAShellItLeavesTheTerminalAlone) {
  const TemporaryDirectory directory;
  const auto picture = directory.path() / "code.png";
  writeCodePicture(picture, "QRCode", "text");
  // A shell that has put its job into the background and forbids it to write to the terminal.
  const auto* shell = R"(
import os, pty, sys, termios, time
shell, terminal = pty.fork()
if shell == 0:
    job = os.fork()
    if job == 0:
        os.setpgid(0, 0)
        time.sleep(0.5)
        os.execv(sys.argv[1], sys.argv[1:])
    modes = termios.tcgetattr(0)
    modes[3] |= termios.TOSTOP
    termios.tcsetattr(0, termios.TCSANOW, modes)
    time.sleep(4)
    changed = os.waitpid(job, os.WUNTRACED | os.WNOHANG)
    print("the job has changed" if changed[0] else "the job is in the background", changed, flush=True)
    print("the shell has read", sys.stdin.readline(), flush=True)
    os.tcsetpgrp(0, job)
    time.sleep(60)
os.write(terminal, b"1\n")
shown = b""
while b"the shell has read 1" not in shown:
    shown += os.read(terminal, 4096)
os.write(1, shown)
os.write(terminal, b"0\n")
while True:
    os.write(1, os.read(terminal, 4096))
)";
  ChildProcess program({"/usr/bin/python3", "-c", shell, NIVLO_PROGRAM, "--surface=offscreen",
                        "--alerts=terminal", "--source=back=file:" + picture.string()},
                       {{"XDG_STATE_HOME", directory.path()},
                        {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent"},
                        {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}});
  EXPECT_TRUE(program.waitForLine("Get a Barcode with content: text")) << program.output();
  EXPECT_TRUE(program.waitForLine("the job is in the background")) << program.output();
  EXPECT_TRUE(program.waitForLine("the shell has read 1")) << "the job took a key of the shell's";
  EXPECT_TRUE(program.waitForLine("Cancelled")) << "it did not ask in the foreground";
}

TEST(ProgramTest, TheLogHoldsTheProgramsEventsButNotWhatWasScanned) {
  const TemporaryDirectory directory;
  const auto picture = directory.path() / "a\r\n<E> forged\x1b[2J";
  writeCodePicture(picture, "QRCode", "secret-of-the-code");
  Nivlo program({"--source", "back=file:" + picture.string()});
  ASSERT_TRUE(program.answer("0) Cancel", 0));
  ASSERT_TRUE(program.waitForLine("Cancelled"));
  ASSERT_THAT(program.terminate(), Eq(0));
  const auto log = directory.read(program.logDirectory() / "log.txt");
  EXPECT_TRUE(log.starts_with("# Application: Nivlo\r\n# Version: "));
  for (const auto* event :
       {"started: NivloWallpaper", "surface: offscreen", "opened", "dialog shown: Barcode",
        "dialog answered: Cancel", "closed", "stopped with status 0"}) {
    EXPECT_THAT(log, HasSubstr(event));
  }
  EXPECT_EQ(log.find("secret"), std::string::npos);
  EXPECT_THAT(log, HasSubstr("a\\r\\n<E> forged\\x1b[2J opened")) << "a file's name forged a line";
  EXPECT_EQ(log.find("\n<E> forged"), std::string::npos);
}

TEST(ProgramTest, ALimitOnTheSizeOfFilesCostsTheLogAndNotTheProgram) {
  constexpr std::size_t kLimit = 100'000;
  const TemporaryDirectory state;
  std::filesystem::create_directories(state.path() / "nivlo" / "Logs");
  state.write(state.path() / "nivlo" / "Logs" / "log.txt", std::string(kLimit, 'x'));
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit usual = limit;
  limit.rlim_cur = kLimit;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  Nivlo program({"--source", "back=demo", "--qr", "off"}, {{"XDG_STATE_HOME", state.path()}});
  setrlimit(RLIMIT_FSIZE, &usual);
  EXPECT_TRUE(program.waitForLine("write: File too large"));
  EXPECT_TRUE(program.waitForLine("first picture"));
  EXPECT_THAT(program.terminate(), Eq(0));
}

TEST(ProgramTest, WithoutATerminalALongRunOfSamplesBecomesACount) {
  const TemporaryDirectory directory;
  std::string lines;
  for (int i = 0; i < 20; ++i) {
    lines += std::to_string(0.3 + i * 0.01) + ", 0, 0, 1\n";
  }
  const auto script = directory.write("script", lines);
  Nivlo program({"--source", "back=none", "--source", "front=none", "--accelerometer",
                 "script:" + script.string(), "--seconds", "1"});
  EXPECT_THAT(program.waitForExit(), Eq(0));
  int samples = 0;
  while (program.waitForLine("0.000000, 0.000000, 1.000000")) {
    ++samples;
  }
  EXPECT_EQ(samples, 3);
  EXPECT_TRUE(program.waitForLine("more lines like this"));
}

TEST(ProgramTest, TheChimePlaysToItsEndWithoutASoundCard) {
  Nivlo program({"chime"});
  EXPECT_THAT(program.waitForExit(), Eq(0));
}

TEST(ProgramTest, WithoutACameraItSaysSoAndKeepsRunning) {
  Nivlo program({"--source", "back=none", "--source", "front=none", "--seconds", "0.3"});
  EXPECT_TRUE(program.waitForLine("No video camera on this device!"));
  EXPECT_THAT(program.waitForExit(), Eq(0));
}

}  // namespace

}  // namespace nivlo::test
