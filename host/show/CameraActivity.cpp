#include "host/show/CameraActivity.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {

namespace {

class ObservedStream : public CameraStream {
 public:
  ObservedStream(std::string camera, std::unique_ptr<CameraStream> stream,
                 std::shared_ptr<CameraActivity> activity)
      : camera_(std::move(camera)), stream_(std::move(stream)), activity_(std::move(activity)) {}
  ~ObservedStream() override {
    stream_.reset();
    if (activity_->open && activity_->open->uniqueID == camera_) {
      activity_->open.reset();
    }
  }

 private:
  std::string camera_;
  std::unique_ptr<CameraStream> stream_;
  std::shared_ptr<CameraActivity> activity_;
};

class ObservedCameras : public CameraDriver {
 public:
  ObservedCameras(std::unique_ptr<CameraDriver> cameras, std::shared_ptr<CameraActivity> activity)
      : cameras_(std::move(cameras)), activity_(std::move(activity)) {}

  std::vector<CameraInfo> cameras() override { return cameras_->cameras(); }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    auto stream = cameras_->open(uniqueID, std::move(onFrame));
    if (!stream) {
      return nullptr;
    }
    const auto known = cameras_->cameras();
    const auto camera = std::find_if(known.begin(), known.end(),
                                     [&](const CameraInfo& info) { return info.uniqueID == uniqueID; });
    activity_->open = camera != known.end() ? *camera : CameraInfo{.uniqueID = uniqueID};
    ++activity_->openings;
    activity_->lastPosition = activity_->open->position;
    return std::make_unique<ObservedStream>(uniqueID, std::move(stream), activity_);
  }

 private:
  std::unique_ptr<CameraDriver> cameras_;
  std::shared_ptr<CameraActivity> activity_;
};

}  // namespace

const char* sideInWords(AVCaptureDevicePosition position) {
  switch (position) {
    case AVCaptureDevicePosition::Back:
      return "back";
    case AVCaptureDevicePosition::Front:
      return "front";
    case AVCaptureDevicePosition::Unspecified:
      break;
  }
  return "unspecified";
}

std::unique_ptr<CameraDriver> observed(std::unique_ptr<CameraDriver> cameras,
                                       std::shared_ptr<CameraActivity> activity) {
  return std::make_unique<ObservedCameras>(std::move(cameras), std::move(activity));
}

}  // namespace nivlo
