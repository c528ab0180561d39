#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "platform/Foundation/Dispatch.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

constexpr double kUpdateInterval = 0.1;  // seconds
constexpr double kShakeThreshold = 1.5;  // g

/// Only accelerations in the positive direction of an axis count, which is intended.
bool isShake(CMAcceleration sample) {
  return sample.x > kShakeThreshold || sample.y > kShakeThreshold || sample.z > kShakeThreshold;
}

}  // namespace

void NivloWallpaper::AddShakeToActive() {
  setIsShaking(false);
  setIsShakeDetectable(false);
  if (motionManager_) {
    return;
  }
  setMotionManager(CMMotionManager::init());
  motionManager_->setAccelerometerUpdateInterval(kUpdateInterval);
  setQueue(NSOperationQueue::init());
  // A strong reference would let the view's own accelerometer keep the view alive.
  motionManager_->startAccelerometerUpdatesToQueue(
      queue(), [observer = weak()](const CMAccelerometerData* data, const NSError* error) {
        if (const auto wallpaper = observer.lock()) {
          wallpaper->handleAccelerometer(data, error);
        }
      });
}

/// On the operation queue.
void NivloWallpaper::handleAccelerometer(const CMAccelerometerData* data, const NSError* error) {
  if (error) {
    motionManager_->stopAccelerometerUpdates();
    return;
  }
  if (!isShakeDetectable_) {
    return;
  }
  const auto sample = data ? data->acceleration() : CMAcceleration{};
  NSLog("%f, %f, %f", sample.x, sample.y, sample.z);
  if (isShake(sample)) {
    dispatch_async(dispatch_get_main_queue(), [self = shared()] { self->reactToShake(); });
  }
}

void NivloWallpaper::reactToShake() {
  if (isShaking()) {
    interuptShakeEffect();
    return;
  }
  setIsShaking(true);
  shakeStartEffect();
}

void NivloWallpaper::shakeStartEffect() { swapFrontAndBackCameras(); }

void NivloWallpaper::interuptShakeEffect() {}

}  // namespace nivlo
