#include "linux/camera/pipewire/EventLoop.hpp"

#include <algorithm>

namespace nivlo::pipewire {

EventLoop::EventLoop() {
  pw_init(nullptr, nullptr);
  loop_.reset(pw_thread_loop_new("nivlo-cameras", nullptr));
  running_ = loop_ && pw_thread_loop_start(loop_.get()) == 0;
}

EventLoop::~EventLoop() {
  if (running_) {
    pw_thread_loop_stop(loop_.get());
  }
}

void EventLoop::run(const std::function<void()>& work) {
  const auto call = [](spa_loop*, bool, uint32_t, const void*, size_t, void* function) {
    (*static_cast<const std::function<void()>*>(function))();
    return 0;
  };
  // A blocking invocation gives the lock up while it waits, so it has to be held.
  pw_thread_loop_lock(loop_.get());
  pw_loop_invoke(get(), call, 0, nullptr, 0, true, const_cast<std::function<void()>*>(&work));
  pw_thread_loop_unlock(loop_.get());
}

void EventLoop::waitForWake(const std::function<bool()>& isDone, std::chrono::milliseconds timeout) {
  pw_thread_loop_lock(loop_.get());
  timespec deadline{};
  pw_thread_loop_get_time(loop_.get(), &deadline, std::chrono::nanoseconds(timeout).count());
  while (!isDone() && pw_thread_loop_timed_wait_full(loop_.get(), &deadline) == 0) {
  }
  pw_thread_loop_unlock(loop_.get());
}

LoopTimer::LoopTimer(EventLoop& loop, std::function<void()> callback)
    : loop_(loop.get()), callback_(std::move(callback)) {
  const auto call = [](void* self, uint64_t) { static_cast<LoopTimer*>(self)->callback_(); };
  source_ = pw_loop_add_timer(loop_, call, this);
}

LoopTimer::~LoopTimer() { pw_loop_destroy_source(loop_, source_); }

void LoopTimer::set(std::chrono::nanoseconds fromNow) {
  constexpr long kSecond = 1'000'000'000;
  // A timer set to zero is a timer that is off.
  const long wait = std::max<long>(fromNow.count(), 1);
  timespec value{wait / kSecond, wait % kSecond};
  pw_loop_update_timer(loop_, source_, &value, nullptr, false);
}

}  // namespace nivlo::pipewire
