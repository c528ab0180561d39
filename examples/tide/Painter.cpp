#include "Painter.hpp"

#include <ctime>
#include <utility>

#include <platform/Foundation/NSThread.hpp>

namespace tide {

namespace {

double hourOfDay() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local.tm_hour + local.tm_min / 60.0;
}

}  // namespace

Painter::Painter(nivlo::CGSize size, Show show)
    : sea_(size), show_(std::move(show)), thread_([this](const std::stop_token& stop) { run(stop); }) {}

void Painter::setRunning(bool running) {
  const std::lock_guard lock(mutex_);
  running_ = running;
  changed_.notify_all();
}

void Painter::setHour(std::optional<double> hour) {
  const std::lock_guard lock(mutex_);
  hour_ = hour;
}

void Painter::setDim(bool isDim) {
  const std::lock_guard lock(mutex_);
  isDim_ = isDim;
}

void Painter::run(const std::stop_token& stop) {
  nivlo::NSThread::currentThread().setName("tide");
  Moment moment;
  std::unique_lock lock(mutex_);
  while (changed_.wait(lock, stop, [this] { return running_; })) {
    moment.hour = hour_.value_or(hourOfDay());
    moment.isDim = isDim_;
    const auto next = std::chrono::steady_clock::now() + kInterval;
    lock.unlock();
    show_(sea_.draw(moment));
    lock.lock();
    // The waves stand still while nobody sees them, and go on from there.
    moment.seconds += std::chrono::duration<double>(kInterval).count();
    changed_.wait_until(lock, stop, next, [this] { return !running_; });
  }
}

}  // namespace tide
