#include "linux/camera/pipewire/CameraCapture.hpp"

#include <utility>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {
namespace {

// A camera that has to wake up takes up to two seconds for its first picture.
constexpr std::chrono::seconds kSilenceLimit{3};

}  // namespace

CameraCapture::CameraCapture(PipeWireLoop& loop, CameraRegistry& registry, std::string name,
                             CameraFrameHandler onFrame)
    : loop_(loop),
      registry_(registry),
      name_(std::move(name)),
      onFrame_(std::move(onFrame)),
      timer_(loop, [this] { check(); }) {
  check();
}

void CameraCapture::connectionLost() {
  if (stream_) {
    dropStream(true);
  }
}

void CameraCapture::check() {
  const std::optional<CameraNode> camera = registry_.find(name_);
  if (camera && camera->id != target_) {
    retryAt_ = Clock::now();
    retryDelay_.reset();
  }
  const bool isTarget = camera && camera->id == target_;
  if (stream_ && (failed_ || isSilent() || !isTarget)) {
    dropStream(!isTarget);
  }
  if (!stream_ && camera && Clock::now() >= retryAt_) {
    openStream(*camera);
  }
  if (stream_) {
    timer_.set(failed_ ? Clock::duration::zero() : silentAt_ - Clock::now());
  } else if (camera) {
    timer_.set(retryAt_ - Clock::now());
  }
}

void CameraCapture::openStream(const CameraNode& camera) {
  target_ = camera.id;
  failed_ = false;
  silentAt_ = Clock::now() + kSilenceLimit;
  const auto failed = [this] {
    failed_ = true;
    timer_.set({});
  };
  const auto defective = [this](const std::string& cause) {
    NSLog(
        "camera %@: %@, so those pictures are not shown; try another driver for it, or choose another camera "
        "with --source",
        name_, cause);
  };
  stream_.emplace(
      loop_, registry_.core(), camera,
      VideoStream::Callbacks{[this](const VideoFramePtr& frame) { frameArrived(frame); }, failed, defective});
}

void CameraCapture::dropStream(bool cameraIsGone) {
  stream_.reset();
  retryAt_ = Clock::now() + retryDelay_.next();
  if (std::exchange(lost_, true)) {
    return;
  }
  if (cameraIsGone) {
    NSLog("camera %@: it is gone; plug it in again or restart PipeWire, and its picture returns", name_);
  } else {
    NSLog(
        "camera %@: it delivers no pictures and is opened again until it does; close any other program that "
        "uses it",
        name_);
  }
}

void CameraCapture::frameArrived(const VideoFramePtr& frame) {
  if (registry_.isLinkedElsewhere(stream_->nodeId(), target_)) {
    failed_ = true;
    timer_.set({});
    return;
  }
  silentAt_ = Clock::now() + kSilenceLimit;
  retryDelay_.reset();
  if (std::exchange(lost_, false)) {
    NSLog("camera %@: its picture is back", name_);
  }
  onFrame_(frame);
}

}  // namespace nivlo
