// "nivlo install-service": who starts the program, which one, and with what.
#include <glib.h>
#include <gmock/gmock.h>

#include "linux/handles/Owned.hpp"
#include "tests/host/program/Nivlo.hpp"
#include "tests/support/PrivateBus.hpp"
#include "tests/support/desktop/HeadlessSway.hpp"

namespace nivlo::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Eq;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

constexpr auto kOddName = R"(/a b/50% "x" \t $H 'y' `z`; # &)";

/// A session with an installed program, which notes what it is started with, and no desktop.
class StartingTest : public testing::Test {
 protected:
  StartingTest() {
    std::filesystem::create_directories(prefix_.path() / "lib/nivlo/NivloWallpaper.bundle");
    makeProgram("bin/nivlo", "#!/bin/sh\nprintf '%s\\n' \"$@\" > $0.part && mv $0.part $0.arguments\n");
  }

  void makeProgram(const std::string& name, const std::string& script) {
    std::filesystem::permissions(prefix_.write(name, script), std::filesystem::perms::owner_all);
  }
  Environment session() const {
    return merged(bus_.environment(), {{"PATH", (prefix_.path() / "bin:").string() + std::getenv("PATH")},
                                       {"XDG_CURRENT_DESKTOP", std::nullopt},
                                       {"XDG_SESSION_DESKTOP", std::nullopt},
                                       {"DESKTOP_SESSION", std::nullopt},
                                       {"SWAYSOCK", std::nullopt},
                                       {"I3SOCK", std::nullopt}});
  }
  /// Runs "nivlo install-service" until it ends with this status, and returns all its output.
  std::string install(Words arguments, int status, const Environment& changes = {}) {
    arguments.insert(arguments.begin(), "install-service");
    Nivlo program(arguments, merged(session(), changes));
    EXPECT_THAT(program.waitForExit(), Eq(status)) << program.output();
    return program.output();
  }
  /// Makes systemd say that it runs the graphical session.
  void playSystemd() { makeProgram("bin/systemctl", "#!/bin/sh\necho $* >> ${0%/*}/calls\n"); }
  bool startsNothing() const { return !std::filesystem::exists(entry_) && !std::filesystem::exists(unit_); }

  PrivateBus bus_;
  TemporaryDirectory prefix_;
  const std::string program_ = prefix_.path() / "bin/nivlo";
  const std::filesystem::path entry_ = bus_.configDirectory() / "autostart" / "nivlo.desktop";
  const std::filesystem::path unit_ = bus_.configDirectory() / "systemd" / "user" / "nivlo.service";
};

Words wordsOf(const std::string& line) {
  gint count = 0;
  gchar** parsed = nullptr;
  g_shell_parse_argv(line.c_str(), &count, &parsed, nullptr);
  const Owned<gchar*, g_strfreev> words(parsed);
  return {parsed, parsed + count};
}

/// The command in a launcher's file as words, in which "%" and "$" are still doubled.
Words commandIn(const std::filesystem::path& path) {
  const Owned<GKeyFile, g_key_file_unref> file(g_key_file_new());
  g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
  const Owned<gchar, g_free> line(path.extension() == ".service"
                                      ? g_key_file_get_value(file.get(), "Service", "ExecStart", nullptr)
                                      : g_key_file_get_string(file.get(), "Desktop Entry", "Exec", nullptr));
  return wordsOf(line ? line.get() : "");
}

/// The first line that begins so, without its beginning; empty if there is none.
std::string restOfLine(const std::string& text, const std::string& beginning) {
  const auto from = ("\n" + text).find("\n" + beginning);
  return from == std::string::npos
             ? ""
             : text.substr(from + beginning.size(), text.find('\n', from) - from - beginning.size());
}

TEST_F(StartingTest, TheDesktopStartsItOnceWithTheSameArgumentsUntilItIsRemoved) {
  const Words arguments{"--preset", "3", std::string("--source=back=pipewire:") + kOddName};
  install(arguments, 0);
  EXPECT_THAT(commandIn(entry_), ElementsAre(program_, "run", "--preset=3",
                                             R"(--source=back=pipewire:/a b/50%% "x" \t $H 'y' `z`; # &)"));
  playSystemd();
  install(arguments, 0);
  EXPECT_THAT(commandIn(unit_), ElementsAre(program_, "run", "--preset=3",
                                            R"(--source=back=pipewire:/a b/50%% "x" \t $$H 'y' `z`; # &)"));
  EXPECT_FALSE(std::filesystem::exists(entry_)) << "it would be started twice";
  install({"--remove"}, 0);
  EXPECT_FALSE(std::filesystem::exists(unit_));
  EXPECT_THAT(prefix_.read("bin/calls"),
              AllOf(HasSubstr("enable nivlo.service"), HasSubstr("disable nivlo.service")));
}

TEST_F(StartingTest, EveryOptionOfTheWallpaperIsKeptForTheDesktopWithAbsolutePaths) {
  const auto here = std::filesystem::current_path();
  writeCodePicture(prefix_.path() / "f.png", "QRCode", "text");
  const auto picture = (prefix_.path() / "f.png").lexically_relative(here);
  const auto script = prefix_.write("s", "0, 0, 0, 1\n").lexically_relative(here);
  const auto bundle = prefix_.path() / "Copy.bundle";
  std::filesystem::create_directory_symlink(
      std::filesystem::canonical(NIVLO_PROGRAM).parent_path() / "NivloWallpaper.bundle", bundle);
  const auto said = install({"--bundle",
                             bundle.lexically_relative(here),
                             "--alerts",
                             "terminal",
                             "--layer",
                             "bottom",
                             "--pause",
                             "never",
                             "--on-battery",
                             "pause",
                             "--fps",
                             "15",
                             "--output",
                             "eDP-1",
                             "--machine",
                             "iPhone4,1",
                             "--accelerometer",
                             "script:" + script.string(),
                             "--source",
                             "front=file:" + picture.string(),
                             "--source",
                             "back=pipewire:n",
                             "--turn",
                             "back=180",
                             "--turn",
                             "back=mirror",
                             "--camera",
                             "front",
                             "--qr",
                             "off"},
                            0);
  EXPECT_THAT(
      commandIn(entry_),
      ElementsAre(program_, "run", "--preset=1", "--qr=off", "--camera=front", "--source=back=pipewire:n",
                  "--turn=back=180", "--turn=back=mirror", "--source=front=file:" + (here / picture).string(),
                  "--accelerometer=script:" + (here / script).string(), "--machine=iPhone4,1",
                  "--output=eDP-1", "--layer=bottom", "--pause=never", "--on-battery=pause", "--fps=15",
                  "--alerts=terminal", "--bundle=" + bundle.string()));
  EXPECT_THAT(said, HasSubstr("no output eDP-1 at present")) << "it may only be unplugged";
}

TEST_F(StartingTest, WhatCouldNeverBeShownIsRefusedWithTheCause) {
  const auto text = prefix_.write("text.png", "no picture").string();
  const auto film = prefix_.write("film.mp4", "no film").string();
  const auto script = prefix_.write("script", "0, a, b, c\n").string();
  for (const auto& [option, cause] : std::vector<std::pair<std::string, std::string>>{
           {"--preset=5", "Nivlo has 4 presets"},
           {"--source=back=file:" + text, text},
           {"--source=front=file:" + film, film},
           {"--source=back=file:/missing.png", "/missing.png"},
           {"--accelerometer=script:" + script, script + ":1"},
           {"--accelerometer=script:/missing", "/missing"},
           {"--bundle=" + prefix_.path().string(), "cannot be used"},
           {"--output=laptop", "no screen can be called 'laptop'"},
           {"--output=eDP 1", "no screen can be called 'eDP 1'"}}) {
    EXPECT_THAT(install({option}, 1), HasSubstr(cause)) << option;
  }
  EXPECT_TRUE(startsNothing());
}

TEST_F(StartingTest, EachDesktopIsToldInTheWayThatItUnderstands) {
  for (const char* desktop : {"GNOME", "ubuntu:GNOME", "KDE", "XFCE", "X-Cinnamon", "Budgie:GNOME", "LXQt"}) {
    EXPECT_THAT(install({}, 0, {{"XDG_CURRENT_DESKTOP", desktop}}), HasSubstr("will start Nivlo from now on"))
        << desktop;
    EXPECT_TRUE(std::filesystem::remove(entry_)) << desktop;
  }
  EXPECT_THAT(install({}, 0, {{"DESKTOP_SESSION", "strange"}}), HasSubstr("does not tell whether it does"));
  EXPECT_TRUE(std::filesystem::remove(entry_));
  for (const auto& [desktop, line] : std::vector<std::pair<std::string, std::string>>{
           {"sway", "exec " + program_ + " run --preset=2\n"},
           {"i3", "exec --no-startup-id " + program_},
           {"Hyprland", "exec-once = " + program_},
           {"river", program_ + " run --preset=2 &"},
           {"labwc:wlroots", program_ + " run --preset=2 &"},
           {"niri", "spawn-at-startup \"" + program_ + "\" \"run\""},
           {"bspwm", program_ + " run --preset=2 &"}}) {
    const auto said = install({"--preset=2"}, 1, {{"XDG_CURRENT_DESKTOP", desktop}});
    EXPECT_THAT(
        said, AllOf(HasSubstr(line), HasSubstr(bus_.configDirectory()), HasSubstr("nothing was installed")));
    EXPECT_THAT(install({"--print", "--preset=2"}, 0), HasSubstr(line));
  }
  EXPECT_THAT(install({}, 1, {{"SWAYSOCK", "/run/sway"}}), HasSubstr("sway starts only"));
  EXPECT_TRUE(startsNothing());
  playSystemd();
  EXPECT_THAT(install({}, 0, {{"XDG_CURRENT_DESKTOP", "sway"}}), HasSubstr("systemd will start Nivlo"));
}

TEST_F(StartingTest, TheLinesStartTheProgramWithTheVeryArguments) {
  HeadlessSway sway(bus_);
  const auto arguments = prefix_.path() / "bin/nivlo.arguments";
  const auto source = std::string("--source=back=pipewire:") + kOddName;
  const auto expected = "run\n--preset=1\n" + source + "\n";
  const auto printed = install({"--print", source}, 0);
  sway.message("exec " + restOfLine(printed, "exec "));
  EXPECT_TRUE(waitFor([&] { return prefix_.read("bin/nivlo.arguments") == expected; }))
      << prefix_.read("bin/nivlo.arguments");
  std::filesystem::remove(arguments);
  outputOf({"/bin/sh", "-c", restOfLine(printed, "exec --no-startup-id ")});
  EXPECT_EQ(prefix_.read("bin/nivlo.arguments"), expected);
}

TEST_F(StartingTest, AnInstalledProgramIsPreferredToTheOneInABuildFolder) {
  EXPECT_THAT(install({"--print"}, 0), AllOf(HasSubstr(program_), Not(HasSubstr("build folder"))));
  std::filesystem::remove_all(prefix_.path() / "lib");
  const auto said = install({"--print"}, 0);
  EXPECT_THAT(said, Not(HasSubstr(program_))) << "a program without its wallpaper is no installation";
  const auto building = std::filesystem::canonical(NIVLO_PROGRAM).string();
  EXPECT_EQ(said.find(building) != std::string::npos, said.find("in a build folder") != std::string::npos)
      << said;
}

TEST_F(StartingTest, SystemdKnowsEveryKeyOfTheUnit) {
  if (const Owned<gchar, g_free> found(g_find_program_in_path("systemd-analyze")); !found) {
    GTEST_SKIP() << "there is no systemd-analyze";
  }
  playSystemd();
  install({"--preset", "2"}, 0);
  ChildProcess verifier({"systemd-analyze", "--user", "--man=no", "--recursive-errors=no", "verify", unit_},
                        bus_.environment());
  EXPECT_THAT(verifier.waitForExit(), Eq(0)) << verifier.output();
  EXPECT_THAT(verifier.output(), Not(HasSubstr("nivlo.service"))) << "no complaint";
}

}  // namespace
}  // namespace nivlo::test
