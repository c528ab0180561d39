#include "bench/reader/LookCost.hpp"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <optional>
#include <vector>

#define ZX_USE_UTF8
#include <ZXing/ReadBarcode.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bench/reader/CameraPicture.hpp"
#include "linux/camera/ImageFile.hpp"
#include "linux/codes/PictureReader.hpp"
#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo::bench {

namespace {

constexpr int kLooks = 10;

double cpuMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Writes the time of each look, and then that of the library call, to the descriptor.
void measure(const LumaPicture& picture, int output) {
  PictureReader reader;
  std::chrono::steady_clock::time_point captureTime;
  for (int i = 0; i < kLooks; ++i, captureTime += std::chrono::milliseconds(100)) {
    const double start = cpuMilliseconds();
    reader.read(picture, captureTime);
    const double spent = cpuMilliseconds() - start;
    if (write(output, &spent, sizeof spent) != sizeof spent) {
      return;
    }
  }
  const double start = cpuMilliseconds();
  ZXing::ReadBarcodes(
      {picture.pixels, picture.width, picture.height, ZXing::ImageFormat::Lum, picture.stride}, {});
  const double spent = cpuMilliseconds() - start;
  if (write(output, &spent, sizeof spent) != sizeof spent) {
    return;
  }
}

/// Returns what a child process has measured before it ended.
std::vector<double> measuredInChild(const LumaPicture& picture) {
  int ends[2];
  if (pipe(ends) != 0) {
    return {};
  }
  const pid_t child = fork();
  if (child == 0) {
    constexpr rlimit kNoCore{0, 0};
    setrlimit(RLIMIT_CORE, &kNoCore);
    if (!std::freopen("/dev/null", "w", stderr)) {
      _exit(1);
    }
    measure(picture, ends[1]);
    _exit(0);
  }
  close(ends[1]);
  std::vector<double> times;
  for (double time = 0; read(ends[0], &time, sizeof time) == sizeof time;) {
    times.push_back(time);
  }
  close(ends[0]);
  if (child > 0) {
    waitpid(child, nullptr, 0);
  }
  return times;
}

}  // namespace

LookCost measureLookCost(const std::vector<test::Photo>& photos, int width, int height) {
  LookCost cost;
  for (const test::Photo& photo : photos) {
    const ImageLoad image = loadImageFile(photo.path);
    LumaBuffer buffer;
    const auto luma = image.frame ? lumaOf(*image.frame, buffer) : std::nullopt;
    if (!luma) {
      continue;
    }
    const LumaBuffer frame = cameraPicture(*luma, width, height);
    const std::vector<double> times = measuredInChild(frame.picture());
    const auto looks = static_cast<std::ptrdiff_t>(std::min<std::size_t>(times.size(), kLooks));
    cost.looks.insert(cost.looks.end(), times.begin(), times.begin() + looks);
    if (times.size() > kLooks) {
      cost.libraryCalls.push_back(times[kLooks]);
    } else {
      ++cost.libraryCrashes;
    }
  }
  return cost;
}

}  // namespace nivlo::bench
