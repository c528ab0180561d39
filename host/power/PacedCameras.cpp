#include "host/power/PacedCameras.hpp"

#include <utility>

namespace nivlo {

namespace {

/// Used on the camera's thread.
class Gate {
 public:
  explicit Gate(std::shared_ptr<const FramePace> pace) : pace_(std::move(pace)) {}

  bool lets(Spacing::Clock::time_point now) {
    const auto interval = pace_->interval();
    if (spacing_.wait(now, interval) > interval.zero()) {
      return false;
    }
    spacing_.happened(now, interval);
    letLast_ = !(pace_->isHalved() && letLast_);
    return letLast_;
  }

 private:
  std::shared_ptr<const FramePace> pace_;
  Spacing spacing_;
  bool letLast_ = false;
};

class PacedCameras : public CameraDriver {
 public:
  PacedCameras(std::unique_ptr<CameraDriver> cameras, std::shared_ptr<const FramePace> pace)
      : cameras_(std::move(cameras)), pace_(std::move(pace)) {}

  std::vector<CameraInfo> cameras() override { return cameras_->cameras(); }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    return cameras_->open(uniqueID,
                          [onFrame = std::move(onFrame), gate = Gate(pace_)](VideoFramePtr frame) mutable {
                            if (gate.lets(Spacing::Clock::now())) {
                              onFrame(std::move(frame));
                            }
                          });
  }

 private:
  std::unique_ptr<CameraDriver> cameras_;
  std::shared_ptr<const FramePace> pace_;
};

}  // namespace

std::unique_ptr<CameraDriver> paced(std::unique_ptr<CameraDriver> cameras,
                                    std::shared_ptr<const FramePace> pace) {
  return cameras ? std::make_unique<PacedCameras>(std::move(cameras), std::move(pace)) : nullptr;
}

}  // namespace nivlo
