// The places of windows, as compositors tell them.
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "host/surfaces/windows/HyprlandAnswers.hpp"
#include "host/surfaces/windows/SessionWindows.hpp"
#include "host/surfaces/windows/SwayMessages.hpp"
#include "host/surfaces/windows/SwayTree.hpp"
#include "host/surfaces/windows/WindowPlaces.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/LoopUntil.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/desktop/ScriptedHyprland.hpp"

namespace nivlo::test {

namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::Le;

TEST(SwayMessagesTest, MessagesArePutTogetherFromPiecesAndForeignOrEndlessOnesAreRefused) {
  const auto stream = swayMessage(SwayMessage::GetTree, "{}") + swayMessage(SwayMessage::WindowEvent, "") +
                      swayMessage(SwayMessage::GetTree, "[1]");
  for (const std::size_t length : {std::size_t{1}, std::size_t{7}, stream.size()}) {
    SwayMessages messages;
    std::vector<std::pair<SwayMessage, std::string>> handled;
    for (std::size_t i = 0; i < stream.size(); i += length) {
      EXPECT_TRUE(messages.take(std::string_view(stream).substr(i, length),
                                [&](auto type, auto payload) { handled.emplace_back(type, payload); }));
    }
    EXPECT_THAT(handled,
                ElementsAre(std::pair(SwayMessage::GetTree, "{}"), std::pair(SwayMessage::WindowEvent, ""),
                            std::pair(SwayMessage::GetTree, "[1]")));
  }
  for (const std::string& foreign :
       {std::string("HTTP/1.1 400 Bad Request\r\n"), std::string("i3-ipc\xff\xff\xff\xff\x04\0\0\0", 14)}) {
    EXPECT_FALSE(SwayMessages().take(foreign, [](auto, auto) { ADD_FAILURE(); }));
  }
}

TEST(SwayTreeTest, BrokenDescriptionsAreRefused) {
  const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
  for (const std::string text :
       {"", "{", "null", "[]", "{}", R"({"nodes": 1})", R"({"nodes": [{"name": "A"}]})",
        R"({"nodes": [{"name": 1, "rect": {"x": 0, "y": 0, "width": 9, "height": 9}, "nodes": []}]})",
        deep.c_str()}) {
    EXPECT_FALSE(windowsInSwayTree(text)) << text.substr(0, 80);
  }
}

/// A window as Hyprland describes it, with what matters here.
std::string window(const std::string& place, int workspace, const std::string& more = R"("fullscreen": 0)") {
  return R"({"address": "0x1", "mapped": true, "hidden": false, )" + place + R"(, "workspace": {"id": )" +
         std::to_string(workspace) + R"(, "name": "w"}, "floating": false, "monitor": 0, "class": "foot", )" +
         more + "}";
}

std::string listOf(const std::vector<std::string>& items) {
  std::string list = "[";
  for (const auto& item : items) {
    list += (list.size() > 1 ? "," : "") + item;
  }
  return list + "]";
}

/// One monitor of 1920x1080 pixels at a scale of 1.5, and one beside it that hangs upright.
constexpr auto kMonitors = R"([
 {"id": 0, "name": "eDP-1", "width": 1920, "height": 1080, "x": 0, "y": 0, "scale": 1.50, "transform": 0,
  "activeWorkspace": {"id": 1, "name": "1"}, "specialWorkspace": {"id": 0, "name": ""}, "reserved": [0, 0, 0, 0]},
 {"id": 1, "name": "DP-2", "width": 1000, "height": 500, "x": 1280, "y": 0, "scale": 1.00, "transform": 1,
  "activeWorkspace": {"id": 2, "name": "2"}, "specialWorkspace": {"id": -98, "name": "special:magic"}}])";

TEST(HyprlandAnswersTest, WindowsOfShownWorkspacesCoverTheOutputsThatTheyLieOn) {
  constexpr auto kLeftHalf = R"("at": [0, 0], "size": [640, 720])";
  constexpr auto kRightHalf = R"("at": [645, 0], "size": [635, 720])";
  constexpr auto kUpright = R"("at": [1280, 0], "size": [500, 1000])";
  const std::vector<std::tuple<std::vector<std::string>, Cover, Cover>> cases{
      {{}, Cover::Nothing, Cover::Nothing},
      {{window(kLeftHalf, 1)}, Cover::Windows, Cover::Nothing},
      {{window(kLeftHalf, 1), window(kRightHalf, 1)}, Cover::Maximized, Cover::Nothing},
      {{window(kLeftHalf, 1), window(kRightHalf, 3)}, Cover::Windows, Cover::Nothing},
      {{window(kUpright, 2)}, Cover::Nothing, Cover::Maximized},
      {{window(kUpright, -98, R"("fullscreen": 2)")}, Cover::Nothing, Cover::Fullscreen},
      {{window(kUpright, 2, R"("fullscreen": 1)")}, Cover::Nothing, Cover::Maximized},
      {{window(kUpright, 2, R"("fullscreen": true, "fullscreenMode": 0)")},
       Cover::Nothing,
       Cover::Fullscreen},
      {{window(kUpright, 2, R"("fullscreen": true, "fullscreenMode": 1)")}, Cover::Nothing, Cover::Maximized},
      {{window(kUpright, 9, R"("fullscreen": 0, "pinned": true)")}, Cover::Nothing, Cover::Maximized},
      {{window(kUpright, 2, R"("fullscreen": 0, "visible": false)")}, Cover::Nothing, Cover::Nothing}};
  for (const auto& [windows, first, second] : cases) {
    const auto desktop = windowsInHyprland(kMonitors, listOf(windows));
    ASSERT_TRUE(desktop) << listOf(windows);
    EXPECT_THAT(desktop->coverOf("eDP-1"), Eq(first)) << listOf(windows);
    EXPECT_THAT(desktop->coverOf("DP-2"), Eq(second)) << listOf(windows);
    EXPECT_THAT(desktop->coverOf("DP-3"), Eq(Cover::Unknown));
  }
  for (const std::string broken : {"", "{", "1", "{}", R"([{"mapped": true}])", R"([{"workspace": 1}])"}) {
    EXPECT_FALSE(windowsInHyprland(kMonitors, broken)) << broken;
    EXPECT_FALSE(windowsInHyprland(broken, "[]")) << broken;
  }
}

TEST(WindowPlacesTest, HyprlandIsAskedSeldomAndAgainAfterItHungUpFailedOrHung) {
  const TemporaryDirectory runtime;
  const auto folder = runtime.path() / "hypr" / "signature";
  std::filesystem::create_directories(folder);
  const ScopedEnvironment session({{"XDG_RUNTIME_DIR", runtime.path()},
                                   {"SWAYSOCK", "/nonexistent"},
                                   {"HYPRLAND_INSTANCE_SIGNATURE", "signature"}});
  const LoggingMachine machine;
  int changes = 0;
  const auto covered = window(R"("at": [0, 0], "size": [1280, 720])", 1);
  ScriptedHyprland hyprland(folder);
  hyprland.answers = {{"j/monitors", kMonitors}, {"j/clients", "[]"}};
  const WindowPlaces places(windowsOfSession(), [&] { ++changes; });
  const auto comesTo = [&](Cover cover) {
    return loopUntil([&] { return places.coverOf("eDP-1") == cover; });
  };
  EXPECT_TRUE(comesTo(Cover::Nothing));
  hyprland.answers["j/clients"] = listOf({covered});
  const auto before = hyprland.received.size();
  for (int i = 0; i < 50; ++i) {
    hyprland.emit("activewindow>>foot,~\nopenwindow>>1,1,foot,~\n");
  }
  EXPECT_TRUE(comesTo(Cover::Maximized));
  EXPECT_THAT(hyprland.received.size() - before, Le(4U)) << "two requests each, in a quarter of a second";
  hyprland.answers["j/clients"] = "[]";
  EXPECT_TRUE(comesTo(Cover::Nothing)) << "without an event";
  hyprland.answers["j/clients"] = listOf({covered});
  hyprland.emit("windowtitle>>1\nopenwin");
  hyprland.emit("dow>>1,1,foot,~\n");
  EXPECT_TRUE(comesTo(Cover::Maximized)) << "an event in two pieces";
  hyprland.hangUp();
  EXPECT_TRUE(comesTo(Cover::Unknown));
  EXPECT_TRUE(comesTo(Cover::Maximized)) << "after it was back";
  hyprland.answers["j/clients"] = "unknown request";
  hyprland.emit("closewindow>>1\n");
  EXPECT_TRUE(comesTo(Cover::Unknown));
  hyprland.answers["j/clients"] = "";
  const auto asked = hyprland.received.size();
  EXPECT_TRUE(loopUntil([&] { return hyprland.received.size() >= asked + 2; }));
  hyprland.answers["j/clients"] = listOf({covered});
  EXPECT_TRUE(comesTo(Cover::Maximized)) << "asked again after silence";
  EXPECT_THAT(machine.log.count("does not tell where its windows are"), Eq(1));
  EXPECT_GT(changes, 5);
}

}  // namespace

}  // namespace nivlo::test
