// The motion of the device, as its accelerometer measures it.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "platform/Foundation/NSOperationQueue.hpp"
#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// One sample of the accelerometer. Immutable.
class CMAccelerometerData {
 public:
  explicit CMAccelerometerData(CMAcceleration acceleration) : acceleration_(acceleration) {}
  /// In units of g; AccelerometerDriver.hpp says which way the axes point.
  CMAcceleration acceleration() const { return acceleration_; }

 private:
  CMAcceleration acceleration_;
};

/// Why an operation failed.
struct NSError {
  std::string localizedDescription;  ///< a sentence for people
};

/// Delivers samples of the accelerometer. Everything may be called from any thread, and from within the
/// handler.
///
/// On a machine without an accelerometer no sample arrives, which is not an error. A sensor that appears
/// later is used from then on.
class CMMotionManager {
 public:
  /// `data` is null when the sensor gave no sample this time. `error` is null, unless the sensor has failed
  /// for good. Both are valid during the call only.
  using AccelerometerHandler = std::function<void(const CMAccelerometerData* data, const NSError* error)>;

  static std::shared_ptr<CMMotionManager> init();
  /// Stops the updates.
  ~CMMotionManager();
  CMMotionManager(const CMMotionManager&) = delete;
  CMMotionManager& operator=(const CMMotionManager&) = delete;

  /// Sets the time between two samples, in seconds; it must be greater than 0. Takes effect when updates are
  /// next started. A hundredth of a second until it is set.
  void setAccelerometerUpdateInterval(double seconds);
  double accelerometerUpdateInterval() const;

  /// Calls the handler on the queue with one sample after the other, until stopped. Keeps the queue and the
  /// handler, with all it captures, alive until then. Does nothing while updates are running, and for a null
  /// queue.
  void startAccelerometerUpdatesToQueue(std::shared_ptr<NSOperationQueue> queue,
                                        AccelerometerHandler handler);
  /// Ends the samples. No call of the handler begins after this has returned, but one that has begun on
  /// another thread may still be running. Does nothing while updates are stopped.
  void stopAccelerometerUpdates();

 private:
  CMMotionManager() = default;

  mutable std::mutex mutex_;
  double interval_ = 0.01;
  std::shared_ptr<std::atomic<bool>> active_;
  std::unique_ptr<AccelerometerStream> stream_;
};

}  // namespace nivlo
