#include "linux/motion/iio/SensorReader.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <thread>
#include <utility>

#include "linux/handles/OwnedSource.hpp"
#include "linux/motion/iio/SensorWatch.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSThread.hpp"

namespace nivlo {

namespace {

using Clock = ReadingSubscription::Clock;

/// Wakes a GLib context once, at the time that was set last.
class Alarm {
 public:
  explicit Alarm(GMainContext* context) : source_(g_source_new(&kFunctions, sizeof(GSource))) {
    g_source_attach(source_.get(), context);
  }

  void setTime(Clock::time_point time) {
    const auto sinceBoot = std::chrono::duration_cast<std::chrono::microseconds>(time.time_since_epoch());
    g_source_set_ready_time(source_.get(), sinceBoot.count());
  }
  void clear() { g_source_set_ready_time(source_.get(), -1); }

 private:
  static gboolean dispatch(GSource* source, GSourceFunc, gpointer) {
    g_source_set_ready_time(source, -1);
    return G_SOURCE_CONTINUE;
  }
  static inline GSourceFuncs kFunctions{nullptr, nullptr, dispatch, nullptr};

  OwnedSource source_;
};

/// Returns whether the error will pass: another process may be using the sensor's buffer, or the sensor may
/// be waking up.
bool isTransient(int error) { return error == EBUSY || error == EAGAIN; }

using Listeners = std::vector<std::shared_ptr<ReadingSubscription>>;

Clock::time_point earliest(const Listeners& listeners) {
  const auto isEarlier = [](const auto& one, const auto& other) { return one->due() < other->due(); };
  return (*std::min_element(listeners.begin(), listeners.end(), isEarlier))->due();
}

/// Reads the sensor, while there is one, for all listeners.
class Sampler {
 public:
  bool hasSensor() const { return watch_.sensor() != nullptr; }

  /// Reads the sensor for the listeners whose reading is due. They get a reading without an acceleration when
  /// the sensor does not answer.
  void sampleFor(const Listeners& listeners) {
    const auto sample = watch_.sensor()->sample();
    if (sample.error == ENOENT || sample.error == ENODEV) {
      watch_.giveUpSensor();
      return;
    }
    AccelerometerReading reading;
    if (sample.error) {
      report(sample.error);
    } else {
      reading.acceleration = sample.acceleration;
    }
    const auto now = Clock::now();
    for (const auto& listener : listeners) {
      if (listener->due() <= now) {
        listener->deliver(reading);
      }
    }
  }

 private:
  void report(int error) {
    if (!isTransient(error) && !std::exchange(reported_, true)) {
      NSLog(
          "motion: cannot read the accelerometer %@: %@; shaking has no effect until it can be read. "
          "Check its permissions and the kernel's log (dmesg)",
          watch_.sensor()->directory(), std::strerror(error));
    }
  }

  SensorWatch watch_;
  bool reported_ = false;
};

}  // namespace

ReadingSubscription::ReadingSubscription(Clock::duration interval, Handler handler)
    : interval_(interval), handler_(std::move(handler)) {}

void ReadingSubscription::end() {
  Handler ended;  // Destroyed outside the lock, because it may hold the last reference to anything.
  const std::lock_guard lock(mutex_);
  ended.swap(handler_);
}

void ReadingSubscription::deliver(const AccelerometerReading& reading) {
  const auto now = Clock::now();
  due_ = due_ + interval_ > now ? due_ + interval_ : now + interval_;
  const std::lock_guard lock(mutex_);
  if (handler_) {
    handler_(reading);
  }
}

void SensorReader::add(std::shared_ptr<ReadingSubscription> subscription) {
  const std::lock_guard lock(mutex_);
  subscriptions_.push_back(std::move(subscription));
  if (std::exchange(running_, true)) {
    g_main_context_wakeup(context_.get());
  } else {
    std::thread([self = shared_from_this()] { self->run(); }).detach();
  }
}

void SensorReader::remove(const std::shared_ptr<ReadingSubscription>& subscription) {
  const std::lock_guard lock(mutex_);
  std::erase(subscriptions_, subscription);
  g_main_context_wakeup(context_.get());
}

void SensorReader::awaitIdle(Clock::duration longest) {
  std::unique_lock lock(mutex_);
  idle_.wait_for(lock, longest, [this] { return !running_; });
}

void SensorReader::run() {
  NSThread::currentThread().setName("motion");
  do {
    serve();
  } while (!endIfUnused());
}

void SensorReader::serve() {
  g_main_context_push_thread_default(context_.get());
  {
    Sampler sampler;
    Alarm alarm(context_.get());
    for (auto listeners = subscriptions(); !listeners.empty(); listeners = subscriptions()) {
      if (sampler.hasSensor() && earliest(listeners) <= Clock::now()) {
        sampler.sampleFor(listeners);
      }
      if (sampler.hasSensor()) {
        alarm.setTime(earliest(listeners));
      } else {
        alarm.clear();
      }
      g_main_context_iteration(context_.get(), TRUE);
    }
  }
  g_main_context_pop_thread_default(context_.get());
}

bool SensorReader::endIfUnused() {
  const std::lock_guard lock(mutex_);
  running_ = !subscriptions_.empty();
  idle_.notify_all();
  return !running_;
}

SensorReader::Subscriptions SensorReader::subscriptions() const {
  const std::lock_guard lock(mutex_);
  return subscriptions_;
}

}  // namespace nivlo
