#include "bench/reader/IdleCost.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <fstream>
#include <future>
#include <optional>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

#include "bench/reader/CameraPicture.hpp"
#include "linux/camera/ImageFile.hpp"
#include "linux/codes/pace/ScenePace.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/process/ProcessCodeReader.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo::bench {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr std::chrono::microseconds kFrameInterval{33'333};
constexpr std::chrono::seconds kUntilIdle{8};
constexpr std::chrono::seconds kMeasured{30};
constexpr double kNoise = 2;  // standard deviation, in levels of 255

/// Delivers a few pictures of the same scene in turn, each with noise of its own.
class NoisyCamera {
 public:
  explicit NoisyCamera(const LumaPicture& scene) {
    std::minstd_rand random;
    std::normal_distribution<double> noise(0, kNoise);
    for (LumaBuffer& picture : pictures_) {
      picture.copyFrom(scene);
      for (std::uint8_t* pixel = picture.row(0); pixel != picture.row(kHeight); ++pixel) {
        *pixel = static_cast<std::uint8_t>(std::clamp(*pixel + noise(random), 0.0, 255.0));
      }
    }
  }

  VideoFrame frame(Clock::time_point captureTime) {
    next_ = (next_ + 1) % pictures_.size();
    VideoFrame frame{.format = PixelFormat::NV12, .width = kWidth, .height = kHeight};
    frame.planes[0] = {pictures_[next_].row(0), kWidth};
    frame.captureTime = captureTime;
    return frame;
  }

 private:
  std::array<LumaBuffer, 4> pictures_;
  std::size_t next_ = 0;
};

double secondsOn(clockid_t clock) {
  timespec time{};
  if (clock_gettime(clock, &time) != 0) {
    throw std::runtime_error("a reader process has ended");
  }
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Returns the CPU-time clock of the process that this thread has started.
clockid_t clockOfChild() {
  pid_t child = 0;
  std::ifstream("/proc/thread-self/children") >> child;
  clockid_t clock{};
  if (child == 0 || clock_getcpuclockid(child, &clock) != 0) {
    throw std::runtime_error("no reader process is running");
  }
  return clock;
}

IdleCost costOfWatching(const LumaPicture& scene) {
  NoisyCamera camera(scene);
  const auto reader = pacedByScene(makeProcessCodeReaderDriver())->makeReader();
  if (!reader) {
    throw std::runtime_error("cannot start nivlo-reader");
  }
  auto due = Clock::now();
  auto nextLook = due;
  const auto watchFor = [&](std::chrono::seconds time) {
    for (const auto end = due + time; due < end; due += kFrameInterval) {
      std::this_thread::sleep_until(due);
      const auto now = Clock::now();
      if (now < nextLook) {
        continue;
      }
      reader->look(camera.frame(now));
      nextLook = now + reader->lookInterval();
    }
  };
  watchFor(kUntilIdle);
  const clockid_t child = clockOfChild();
  const double readingBefore = secondsOn(child);
  const double feedingBefore = secondsOn(CLOCK_THREAD_CPUTIME_ID);
  watchFor(kMeasured);
  const double measured = Seconds(kMeasured).count();
  return {(secondsOn(CLOCK_THREAD_CPUTIME_ID) - feedingBefore) / measured,
          (secondsOn(child) - readingBefore) / measured};
}

}  // namespace

std::vector<IdleCost> measureIdleCost(const std::vector<test::Photo>& scenes) {
  std::vector<std::future<IdleCost>> running;
  for (const test::Photo& photo : scenes) {
    running.push_back(std::async(std::launch::async, [path = photo.path] {
      const ImageLoad image = loadImageFile(path);
      LumaBuffer buffer;
      const auto luma = image.frame ? lumaOf(*image.frame, buffer) : std::nullopt;
      if (!luma) {
        throw std::runtime_error(path.string() + ": " + image.error);
      }
      return costOfWatching(cameraPicture(*luma, kWidth, kHeight).picture());
    }));
  }
  std::vector<IdleCost> costs;
  for (auto& cost : running) {
    costs.push_back(cost.get());
  }
  return costs;
}

}  // namespace nivlo::bench
