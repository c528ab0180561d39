// The thread that reads the accelerometer.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include <glib.h>

#include "linux/handles/Owned.hpp"
#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// A handler that gets readings at an interval of its own.
class ReadingSubscription {
 public:
  using Handler = std::function<void(const AccelerometerReading&)>;
  using Clock = std::chrono::steady_clock;

  ReadingSubscription(Clock::duration interval, Handler handler);

  /// Ends the readings and destroys the handler. When this returns, the handler is not running and will not
  /// be called again.
  void end();

  /// When the next reading is due. For the reader's thread only.
  Clock::time_point due() const { return due_; }
  /// Calls the handler, unless the subscription has ended. For the reader's thread only.
  void deliver(const AccelerometerReading& reading);

 private:
  const Clock::duration interval_;
  Clock::time_point due_ = Clock::now();
  std::mutex mutex_;
  Handler handler_;
};

/// Looks for the sensor and reads it, on a thread that exists while there are subscriptions. Reading can hang
/// for as long as the hardware does, so nobody waits for that thread: it keeps this object alive and ends by
/// itself. If a subscription is added before it has ended, it goes on, so there is never more than one
/// thread. Callable from any thread.
class SensorReader : public std::enable_shared_from_this<SensorReader> {
 public:
  void add(std::shared_ptr<ReadingSubscription> subscription);
  void remove(const std::shared_ptr<ReadingSubscription>& subscription);

  /// Waits until the thread has ended, or this much time has passed.
  void awaitIdle(std::chrono::steady_clock::duration longest);

 private:
  using Subscriptions = std::vector<std::shared_ptr<ReadingSubscription>>;

  void run();
  void serve();
  bool endIfUnused();
  Subscriptions subscriptions() const;

  const Owned<GMainContext, g_main_context_unref> context_{g_main_context_new()};
  mutable std::mutex mutex_;
  std::condition_variable idle_;
  Subscriptions subscriptions_;
  bool running_ = false;
};

}  // namespace nivlo
