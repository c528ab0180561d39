#include "host/show/ObservedCameras.hpp"

#include <algorithm>
#include <utility>

#include "host/loop/EventSource.hpp"

namespace nivlo {

namespace {

class ObservedStream : public CameraStream {
 public:
  ObservedStream(ObservedCamera camera, std::unique_ptr<CameraStream> stream, CameraObserver observer)
      : camera_(std::move(camera)), observer_(std::move(observer)), stream_(std::move(stream)) {
    observer_(CameraEvent::Opened, camera_);
    watch();
  }
  ~ObservedStream() override {
    stream_.reset();
    observer_(CameraEvent::Closed, camera_);
  }

 private:
  void watch() {
    check_ = EventSource::onTimeout(kCameraSilence, [this] {
      const bool silent = !camera_.pulse->isAlive();
      if (silent != std::exchange(silent_, silent)) {
        observer_(silent ? CameraEvent::Silent : CameraEvent::Resumed, camera_);
      }
      watch();
    });
  }

  ObservedCamera camera_;
  bool silent_ = false;
  CameraObserver observer_;
  EventSource check_;
  std::unique_ptr<CameraStream> stream_;
};

class ObservedCameras : public CameraDriver {
 public:
  ObservedCameras(std::unique_ptr<CameraDriver> cameras, CameraObserver observer)
      : cameras_(std::move(cameras)), observer_(std::move(observer)) {}

  std::vector<CameraInfo> cameras() override { return cameras_->cameras(); }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    const auto pulse = std::make_shared<CameraPulse>();
    auto stream = cameras_->open(uniqueID, [onFrame = std::move(onFrame), pulse](VideoFramePtr frame) {
      pulse->beat();
      onFrame(std::move(frame));
    });
    if (!stream) {
      observer_(CameraEvent::Refused, {.info = {.uniqueID = uniqueID}, .pulse = nullptr});
      return nullptr;
    }
    return std::make_unique<ObservedStream>(ObservedCamera{infoOf(uniqueID), pulse}, std::move(stream),
                                            observer_);
  }

 private:
  /// A camera that can be opened before it is plugged in may not be in the list yet.
  CameraInfo infoOf(const std::string& uniqueID) {
    const auto known = cameras_->cameras();
    const auto camera = std::find_if(known.begin(), known.end(),
                                     [&](const CameraInfo& info) { return info.uniqueID == uniqueID; });
    return camera != known.end() ? *camera : CameraInfo{.uniqueID = uniqueID};
  }

  std::unique_ptr<CameraDriver> cameras_;
  CameraObserver observer_;
};

}  // namespace

std::unique_ptr<CameraDriver> observed(std::unique_ptr<CameraDriver> cameras, CameraObserver observer) {
  return cameras ? std::make_unique<ObservedCameras>(std::move(cameras), std::move(observer)) : nullptr;
}

}  // namespace nivlo
