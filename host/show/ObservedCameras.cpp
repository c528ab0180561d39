#include "host/show/ObservedCameras.hpp"

#include <algorithm>
#include <atomic>
#include <utility>

#include "host/loop/EventSource.hpp"
#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

namespace {

/// The report of a stream's first frame.
struct FirstFrame {
  std::atomic<bool> arrived{false};
  std::function<void()>
      report;  ///< for the main thread only; null before the stream is open and once it is closed
};

/// To be called with each frame, on any thread.
void noteFrame(const std::shared_ptr<FirstFrame>& first) {
  if (!first->arrived.exchange(true)) {
    dispatch_async(dispatch_get_main_queue(), [first] {
      if (first->report) {
        first->report();
      }
    });
  }
}

class ObservedStream : public CameraStream {
 public:
  ObservedStream(ObservedCamera camera, std::unique_ptr<CameraStream> stream,
                 std::shared_ptr<FirstFrame> first, CameraObserver observer)
      : camera_(std::move(camera)),
        first_(std::move(first)),
        observer_(std::move(observer)),
        stream_(std::move(stream)) {
    observer_(CameraEvent::Opened, camera_);
    first_->report = [this] { observer_(CameraEvent::Started, camera_); };
    watch();
  }
  ~ObservedStream() override {
    stream_.reset();
    first_->report = nullptr;
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
  std::shared_ptr<FirstFrame> first_;
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
    const auto first = std::make_shared<FirstFrame>();
    auto stream = cameras_->open(uniqueID, [onFrame = std::move(onFrame), pulse, first](VideoFramePtr frame) {
      pulse->beat();
      noteFrame(first);
      onFrame(std::move(frame));
    });
    if (!stream) {
      observer_(CameraEvent::Refused, {.info = {.uniqueID = uniqueID}, .pulse = nullptr});
      return nullptr;
    }
    return std::make_unique<ObservedStream>(ObservedCamera{infoOf(uniqueID), pulse}, std::move(stream), first,
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
