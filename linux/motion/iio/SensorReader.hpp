// The thread that asks the accelerometer.
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

/// One listener to the readings.
class ReadingSubscription {
 public:
  using Handler = std::function<void(const AccelerometerReading&)>;
  using Clock = std::chrono::steady_clock;

  ReadingSubscription(Clock::duration interval, Handler handler);

  /// No handler runs once this has returned, and the handler is gone.
  void end();

  /// When the next reading is due. The reader's thread only, like deliver().
  Clock::time_point due() const { return due_; }
  void deliver(const AccelerometerReading& reading);

 private:
  const Clock::duration interval_;
  Clock::time_point due_ = Clock::now();
  std::mutex mutex_;
  Handler handler_;
};

/// Watches and reads the sensor on a thread that exists while there are subscriptions. As a read can hang as
/// long as the hardware does, nobody waits for that thread: it keeps its reader alive and ends by itself. A
/// subscription made meanwhile is served by the same thread, so there is never more than one. Callable from
/// any thread.
class SensorReader : public std::enable_shared_from_this<SensorReader> {
 public:
  void add(std::shared_ptr<ReadingSubscription> subscription);
  void remove(const std::shared_ptr<ReadingSubscription>& subscription);

  /// Waits until the thread has ended, if it ends in time.
  void awaitIdle(std::chrono::steady_clock::duration patience);

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
