#include <atomic>
#include <utility>

#include "host/log/ProgramLog.hpp"
#include "host/loop/EventSource.hpp"
#include "kit/MFLog/MFLog.hpp"

namespace nivlo {

namespace {

/// Longer than any camera's pause between frames, shorter than a person's patience.
constexpr std::chrono::seconds kSilence{3};

class LoggedStream : public CameraStream {
 public:
  LoggedStream(std::string camera, std::unique_ptr<CameraStream> stream,
               std::shared_ptr<const std::atomic<unsigned>> frames)
      : camera_(std::move(camera)), frames_(std::move(frames)), stream_(std::move(stream)) {
    MFInfo("camera %@ opened", camera_);
    watch();
  }
  ~LoggedStream() override {
    stream_.reset();
    MFInfo("camera %@ closed", camera_);
  }

 private:
  void watch() {
    check_ = EventSource::onTimeout(kSilence, [this] {
      const unsigned now = *frames_;
      const bool silent = now == std::exchange(lastFrames_, now);
      if (silent != std::exchange(silent_, silent)) {
        MFNotice(silent ? "camera %@ lost: no picture comes" : "camera %@ is back", camera_);
      }
      watch();
    });
  }

  std::string camera_;
  std::shared_ptr<const std::atomic<unsigned>> frames_;  // counted on the camera's thread
  unsigned lastFrames_ = 0;
  bool silent_ = false;
  EventSource check_;
  std::unique_ptr<CameraStream> stream_;
};

class LoggedCameras : public CameraDriver {
 public:
  explicit LoggedCameras(std::unique_ptr<CameraDriver> cameras) : cameras_(std::move(cameras)) {}

  std::vector<CameraInfo> cameras() override { return cameras_->cameras(); }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    const auto frames = std::make_shared<std::atomic<unsigned>>(0);
    auto stream = cameras_->open(uniqueID, [onFrame = std::move(onFrame), frames](VideoFramePtr frame) {
      ++*frames;
      onFrame(std::move(frame));
    });
    if (!stream) {
      MFWarning("camera %@ cannot be opened", uniqueID);
      return nullptr;
    }
    return std::make_unique<LoggedStream>(uniqueID, std::move(stream), frames);
  }

 private:
  std::unique_ptr<CameraDriver> cameras_;
};

}  // namespace

std::unique_ptr<CameraDriver> logged(std::unique_ptr<CameraDriver> cameras) {
  return cameras ? std::make_unique<LoggedCameras>(std::move(cameras)) : nullptr;
}

}  // namespace nivlo
