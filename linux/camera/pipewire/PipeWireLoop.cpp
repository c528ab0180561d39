#include "linux/camera/pipewire/PipeWireLoop.hpp"

#include <algorithm>
#include <ctime>
#include <utility>

#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSThread.hpp"

namespace nivlo {
namespace {

constexpr const char* kThreadName = "camera";

}  // namespace

PipeWireLoop::PipeWireLoop() {
  pw_init(nullptr, nullptr);
  loop_.reset(pw_thread_loop_new(kThreadName, nullptr));
  if (!loop_) {
    return;
  }
  // A thread's name in the log can be set by that thread only. run() would not do: until the thread has
  // begun, libpipewire runs an invocation on the caller's. The event's source is freed with the loop.
  const auto nameThread = [](void*, uint64_t) { NSThread::currentThread().setName(kThreadName); };
  spa_source* begun = pw_loop_add_event(get(), nameThread, nullptr);
  if (begun == nullptr) {
    return;
  }
  pw_loop_signal_event(get(), begun);
  running_ = pw_thread_loop_start(loop_.get()) == 0;
}

PipeWireLoop::~PipeWireLoop() {
  if (running_) {
    pw_thread_loop_stop(loop_.get());
  }
}

void PipeWireLoop::run(const std::function<void()>& work) {
  const auto call = [](spa_loop*, bool, uint32_t, const void*, size_t, void* function) {
    (*static_cast<const std::function<void()>*>(function))();
    return 0;
  };
  // A blocking invocation releases the lock while it waits, so the lock must be held.
  pw_thread_loop_lock(loop_.get());
  pw_loop_invoke(get(), call, 0, nullptr, 0, true, const_cast<std::function<void()>*>(&work));
  pw_thread_loop_unlock(loop_.get());
}

void PipeWireLoop::waitForWake(const std::function<bool()>& isDone, std::chrono::milliseconds timeout) {
  pw_thread_loop_lock(loop_.get());
  timespec deadline{};
  pw_thread_loop_get_time(loop_.get(), &deadline, std::chrono::nanoseconds(timeout).count());
  while (!isDone() && pw_thread_loop_timed_wait_full(loop_.get(), &deadline) == 0) {
  }
  pw_thread_loop_unlock(loop_.get());
}

LoopTimer::LoopTimer(PipeWireLoop& loop, std::function<void()> callback)
    : loop_(loop.get()), callback_(std::move(callback)) {
  open();
}

LoopTimer::~LoopTimer() {
  if (source_ != nullptr) {
    pw_loop_destroy_source(loop_, source_);
  }
}

bool LoopTimer::open() {
  if (source_ == nullptr) {
    const auto call = [](void* self, uint64_t) { static_cast<LoopTimer*>(self)->callback_(); };
    source_ = pw_loop_add_timer(loop_, call, this);
  }
  return source_ != nullptr;
}

void LoopTimer::set(std::chrono::nanoseconds fromNow) {
  if (!open()) {
    NSLog("cameras: there are too many open files for a timer; close some, or raise their limit (ulimit -n)");
    return;
  }
  constexpr long kSecond = 1'000'000'000;
  // Setting a timer to zero would switch it off.
  const long wait = std::max<long>(fromNow.count(), 1);
  timespec value{wait / kSecond, wait % kSecond};
  pw_loop_update_timer(loop_, source_, &value, nullptr, false);
}

}  // namespace nivlo
