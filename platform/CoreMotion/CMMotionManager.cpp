#include "platform/CoreMotion/CMMotionManager.hpp"

#include <utility>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

std::shared_ptr<CMMotionManager> CMMotionManager::init() {
  return std::shared_ptr<CMMotionManager>(new CMMotionManager);
}

CMMotionManager::~CMMotionManager() { stopAccelerometerUpdates(); }

void CMMotionManager::setAccelerometerUpdateInterval(double seconds) {
  const std::lock_guard lock(mutex_);
  interval_ = seconds;
}

double CMMotionManager::accelerometerUpdateInterval() const {
  const std::lock_guard lock(mutex_);
  return interval_;
}

void CMMotionManager::startAccelerometerUpdatesToQueue(std::shared_ptr<NSOperationQueue> queue,
                                                       AccelerometerHandler handler) {
  const std::lock_guard lock(mutex_);
  if (active_ || !queue) {
    return;
  }
  active_ = std::make_shared<std::atomic<bool>>(true);
  if (!drivers().accelerometer) {
    return;
  }
  const auto shared = std::make_shared<AccelerometerHandler>(std::move(handler));
  stream_ = drivers().accelerometer->start(
      std::chrono::duration<double>(interval_),
      [queue = std::move(queue), shared, active = active_](const AccelerometerReading& reading) {
        queue->addOperation([shared, active, reading] {
          if (!*active) {
            return;
          }
          const auto data = reading.acceleration
                                ? std::make_optional<CMAccelerometerData>(*reading.acceleration)
                                : std::nullopt;
          const auto error = reading.error ? std::make_optional(NSError{*reading.error}) : std::nullopt;
          (*shared)(data ? &*data : nullptr, error ? &*error : nullptr);
        });
      });
}

void CMMotionManager::stopAccelerometerUpdates() {
  // Destroyed outside the lock, because its destructor may wait for the driver's thread.
  std::unique_ptr<AccelerometerStream> ended;
  {
    const std::lock_guard lock(mutex_);
    if (active_) {
      *active_ = false;
      active_.reset();
    }
    ended = std::move(stream_);
  }
}

}  // namespace nivlo
