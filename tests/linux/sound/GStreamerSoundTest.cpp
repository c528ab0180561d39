#include <algorithm>
#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <gtest/gtest.h>

#include "linux/handles/Descriptor.hpp"
#include "linux/sound/GStreamerSound.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/support/ChildProcess.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/LoopUntil.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo {
namespace {

/// A machine without a sound card, and without a sound server unless a test starts one.
class Sound : public testing::Test {
 protected:
  const std::filesystem::path chime = NIVLO_RESOURCES "/hourlychimebeg.m4a";
  test::TemporaryDirectory directory;
  const std::filesystem::path socket = directory.path() / "sound-server";
  test::ScopedEnvironment environment{{{"HOME", directory.path()},
                                       {"XDG_RUNTIME_DIR", directory.path()},
                                       {"GST_REGISTRY", directory.path() / "registry"},
                                       {"JACK_NO_START_SERVER", "1"},
                                       {"PULSE_SERVER", "unix:" + socket.string()}}};
  LoggingMachine machine;
  RecordingLog& log = machine.log;
};

TEST_F(Sound, NeverCompletesWhenItCannotBePlayedOrIsNotReportedOnce) {
  auto driver = makeGStreamerSound(std::chrono::seconds(1));
  const std::filesystem::path files[] = {directory.path() / "missing.m4a", directory.write("empty.m4a", ""),
                                         directory.write("noise.m4a", std::string(5000, '\x5a')),
                                         directory.write("half.m4a", directory.read(chime).substr(0, 900))};
  for (const auto& file : files) {
    for (int round = 0; round < 3; ++round) {
      int completions = 0;
      std::unique_ptr<SoundPlayback> playback;
      playback = driver->play(file, [&] {
        ++completions;
        playback = nullptr;
      });
      EXPECT_TRUE(test::loopUntil([&] { return completions == 1; })) << file;
    }
    EXPECT_EQ(log.count(file.filename().string()), 1) << testing::PrintToString(log.lines());
  }
}

TEST_F(Sound, CompletesAfterItWasDestroyed) {
  auto driver = makeGStreamerSound();
  const auto playToEnd = [&](const std::filesystem::path& file) {
    bool ended = false;
    const auto playback = driver->play(file, [&] { ended = true; });
    EXPECT_TRUE(test::loopUntil([&] { return ended; }));
  };
  int completions = 0;
  driver->play(chime, [&] { ++completions; });
  auto playing = driver->play(chime, [&] { ++completions; });
  playToEnd(directory.path() / "missing.m4a");
  EXPECT_EQ(completions, 0);
  playing = nullptr;
  playToEnd(chime);
  EXPECT_EQ(completions, 0);
  auto last = driver->play(chime, [&] { ++completions; });
  driver = nullptr;
  last = nullptr;
}

TEST_F(Sound, IsSilentWithASoundServerOrHangsWithoutIt) {
  const auto heard = directory.path() / "heard";
  test::ChildProcess server(
      {"pulseaudio", "-n", "-v", "--daemonize=no", "--exit-idle-time=-1", "--disallow-exit", "-L",
       "module-pipe-sink use_system_clock_for_timing=yes format=s16le channels=1 file=" + heard.string(),
       "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + socket.string()});
  if (!server.waitForLine("Daemon startup complete")) {
    GTEST_SKIP() << "pulseaudio cannot run here: " << server.output();
  }
  const Descriptor output(open(heard.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  ASSERT_GE(output.get(), 0);
  const auto listen = [&] {
    int peak = 0;
    std::array<std::int16_t, 2048> samples{};
    for (ssize_t bytes; (bytes = ::read(output.get(), samples.data(), sizeof samples)) > 0;) {
      std::for_each_n(samples.begin(), bytes / sizeof samples[0],
                      [&](std::int16_t sample) { peak = std::max(peak, std::abs(int{sample})); });
    }
    return peak;
  };
  constexpr int kAudible = 3000;
  auto driver = makeGStreamerSound();
  int peak = 0;
  int completions = 0;
  auto playback = driver->play(chime, [&] { ++completions; });
  EXPECT_TRUE(test::loopUntil([&] {
    peak = std::max(peak, listen());
    return completions == 1;
  }));
  EXPECT_GT(peak, kAudible);
  EXPECT_TRUE(log.lines().empty()) << log.lines().front();
  playback = driver->play(chime, [&] { ++completions; });
  EXPECT_TRUE(test::loopUntil([&] { return listen() > kAudible; }));
  server.kill();
  EXPECT_TRUE(test::loopUntil([&] { return completions == 2; }));
  EXPECT_EQ(log.count("cannot play"), 1);
}

}  // namespace
}  // namespace nivlo
