// Measures what the camera's frames cost on their way through the wallpaper.
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "platform/drivers/Drivers.hpp"
#include "tests/fakes/ManualMainQueue.hpp"
#include "tests/support/codes/ZXingCodeReader.hpp"

namespace nivlo {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr auto kFrameInterval = std::chrono::microseconds(33'333);

/// Draws hills, a sky and a few discs: soft shades and hard edges as in a photo, without noise or codes.
std::uint8_t lumaAt(int x, int y) {
  const double hill = 430 + 60 * std::sin(x / 140.0) + 25 * std::sin(x / 37.0);
  double luma = y < hill ? 190 - y * 0.12 : 70 + (y - hill) * 0.15 + 12 * std::sin(x / 11.0 + y / 19.0);
  for (const auto [centreX, centreY, radius] : {std::array{300, 520, 90}, {820, 560, 60}, {1000, 160, 70}}) {
    const double distance = std::hypot(x - centreX, y - centreY);
    if (distance < radius) {
      luma = 110 + 100 * std::cos(distance / radius * 1.4);
    }
  }
  return static_cast<std::uint8_t>(luma);
}

VideoFramePtr drawnScene() {
  const auto pixels = std::make_shared<std::vector<std::uint8_t>>(kWidth * kHeight * 3 / 2, 128);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      (*pixels)[y * kWidth + x] = lumaAt(x, y);
    }
  }
  auto frame = std::make_shared<VideoFrame>();
  frame->format = PixelFormat::NV12;
  frame->width = kWidth;
  frame->height = kHeight;
  frame->planes = {Plane{pixels->data(), kWidth}, Plane{pixels->data() + kWidth * kHeight, kWidth}};
  frame->storage = pixels;
  return frame;
}

/// A single camera, whose frames the benchmark pushes. The first frame arrives at once, so that starting does
/// not wait for one.
class PushedCamera : public CameraDriver {
 public:
  std::vector<CameraInfo> cameras() override {
    return {{"bench", "Bench camera", AVCaptureDevicePosition::Back}};
  }
  std::unique_ptr<CameraStream> open(const std::string&, CameraFrameHandler onFrame) override {
    onFrame_ = std::move(onFrame);
    push();
    return std::make_unique<CameraStream>();
  }
  void push() { onFrame_(picture_); }

 private:
  const VideoFramePtr picture_ = drawnScene();
  CameraFrameHandler onFrame_;
};

/// Counts the looks of its readers.
class CountingReaderDriver : public CodeReaderDriver {
 public:
  std::atomic<int> looks{0};

  std::vector<std::string> availableTypes() const override { return driver_->availableTypes(); }
  bool canRead() const override { return driver_->canRead(); }
  std::unique_ptr<CodeReader> makeReader() override {
    return std::make_unique<Reader>(driver_->makeReader(), looks);
  }

 private:
  class Reader : public CodeReader {
   public:
    Reader(std::unique_ptr<CodeReader> reader, std::atomic<int>& looks)
        : reader_(std::move(reader)), looks_(looks) {}
    std::vector<DecodedCode> look(const VideoFrame& frame) override {
      ++looks_;
      return reader_->look(frame);
    }
    bool mayLook() const override { return reader_->mayLook(); }

   private:
    std::unique_ptr<CodeReader> reader_;
    std::atomic<int>& looks_;
  };

  std::unique_ptr<CodeReaderDriver> driver_ = makeZXingCodeReaderDriver();
};

/// A wallpaper with its camera running. Detection is on if the gate is open.
class RunningWallpaper {
 public:
  explicit RunningWallpaper(bool gateOpen) {
    auto camera = std::make_unique<PushedCamera>();
    auto reader = std::make_unique<CountingReaderDriver>();
    camera_ = camera.get();
    reader_ = reader.get();
    Drivers drivers;
    drivers.mainQueue = std::make_unique<ManualMainQueue>();
    drivers.cameras = std::move(camera);
    drivers.codeReader = std::move(reader);
    installDrivers(std::move(drivers));
    view_ = NivloWallpaper::initWithFrame({{0, 0}, {1920, 1080}});
    view_->setWallpaperOptions({{"qr", gateOpen}});
    view_->setAnimating(true);
  }
  ~RunningWallpaper() {
    view_.reset();
    installDrivers({});
  }
  NivloWallpaper& view() { return *view_; }
  PushedCamera& camera() { return *camera_; }
  int looks() const { return reader_->looks; }

 private:
  PushedCamera* camera_;
  CountingReaderDriver* reader_;
  std::shared_ptr<NivloWallpaper> view_;
};

class EmptyDelegate : public AVCaptureMetadataOutputObjectsDelegate {
 public:
  void captureOutput(AVCaptureMetadataOutput&, const MetadataObjects&, const AVCaptureConnection&) override {}
};

double nanosecondsPerCall(AVCaptureMetadataOutputObjectsDelegate* delegate, AVCaptureMetadataOutput& output,
                          const MetadataObjects& objects) {
  constexpr int kCalls = 100'000;
  const AVCaptureConnection connection;
  const auto start = Clock::now();
  for (int i = 0; i < kCalls; ++i) {
    benchmark::DoNotOptimize(delegate);
    delegate->captureOutput(output, objects, connection);
  }
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / kCalls;
}

void callbackWithTheGateClosed(benchmark::State& state) {
  RunningWallpaper wallpaper(false);
  EmptyDelegate empty;
  auto& output = *wallpaper.view().metadataOutput();
  const MetadataObjects objects{std::make_shared<AVMetadataObject>("org.iso.QRCode", CGRect{})};
  double emptyTime = 0, callbackTime = 0;
  for (auto _ : state) {
    emptyTime += nanosecondsPerCall(&empty, output, objects);
    const double callback = nanosecondsPerCall(&wallpaper.view(), output, objects);
    callbackTime += callback;
    state.SetIterationTime(callback * 1e-9);
  }
  const auto iterations = static_cast<double>(state.iterations());
  state.counters["empty_call_ns"] = emptyTime / iterations;
  state.counters["callback_ns"] = callbackTime / iterations;
  state.counters["ratio"] = callbackTime / emptyTime;
}

void frameThroughTheSession(benchmark::State& state, bool gateOpen) {
  RunningWallpaper wallpaper(gateOpen);
  const auto start = Clock::now();
  const int looksBefore = wallpaper.looks();
  auto due = start;
  for (auto _ : state) {
    wallpaper.camera().push();
    std::this_thread::sleep_until(due += kFrameInterval);
  }
  const int looks = wallpaper.looks() - looksBefore;
  state.counters["looks"] = looks;
  state.counters["looks_per_s"] = looks / std::chrono::duration<double>(Clock::now() - start).count();
  if (!gateOpen && looks > 0) {
    state.SkipWithError("frames were decoded while the gate was closed");
  }
  if (gateOpen && looks == 0) {
    state.SkipWithError("no frame was decoded while the gate was open");
  }
}

BENCHMARK(callbackWithTheGateClosed)->UseManualTime()->Iterations(200);
BENCHMARK_CAPTURE(frameThroughTheSession, gateClosed, false)
    ->Iterations(300)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(frameThroughTheSession, gateOpen, true)
    ->Iterations(300)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nivlo
