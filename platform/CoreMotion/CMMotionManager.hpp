// The device's motion.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "platform/Foundation/NSOperationQueue.hpp"
#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

class CMAccelerometerData {
 public:
  explicit CMAccelerometerData(CMAcceleration acceleration) : acceleration_(acceleration) {}
  CMAcceleration acceleration() const { return acceleration_; }

 private:
  CMAcceleration acceleration_;
};

struct NSError {
  std::string localizedDescription;
};

/// Operations are callable from any thread, also from within the handler.
class CMMotionManager {
 public:
  /// `data` is null when the sensor had nothing to say; `error` is null on success.
  using AccelerometerHandler = std::function<void(const CMAccelerometerData* data, const NSError* error)>;

  static std::shared_ptr<CMMotionManager> init();
  ~CMMotionManager();
  CMMotionManager(const CMMotionManager&) = delete;
  CMMotionManager& operator=(const CMMotionManager&) = delete;

  /// Seconds, greater than 0. Takes effect with the next start.
  void setAccelerometerUpdateInterval(double seconds);
  double accelerometerUpdateInterval() const;

  /// Delivers samples on the queue until stopped; both are held until then. Nothing happens while updates run
  /// already, or for a null queue.
  void startAccelerometerUpdatesToQueue(std::shared_ptr<NSOperationQueue> queue,
                                        AccelerometerHandler handler);
  /// No handler starts once this has returned, but on another thread one may still be running.
  void stopAccelerometerUpdates();

 private:
  CMMotionManager() = default;

  mutable std::mutex mutex_;
  double interval_ = 0.01;
  std::shared_ptr<std::atomic<bool>> active_;
  std::unique_ptr<AccelerometerStream> stream_;
};

}  // namespace nivlo
