// A main queue that runs only when the test drains it.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/drivers/MainQueueDriver.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo {

/// The thread that constructs it is the main thread. The others may call post(), isMainThread() and
/// pending().
class ManualMainQueue : public MainQueueDriver {
 public:
  void post(std::function<void()> work) override {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
  }
  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }

  /// Runs the queued work, and the work that this queues in turn. Returns how many pieces of work it ran.
  int drain() {
    int count = 0;
    while (const auto next = takeFirst()) {
      next();
      ++count;
    }
    return count;
  }

  /// Drains repeatedly until the condition holds or kPatience runs out. Returns whether it held.
  bool drainUntil(const std::function<bool()>& condition) {
    return test::waitFor([&] {
      drain();
      return condition();
    });
  }

  /// Returns how many pieces of work are queued.
  std::size_t pending() const {
    const std::lock_guard lock(mutex_);
    return work_.size();
  }

 private:
  std::function<void()> takeFirst() {
    const std::lock_guard lock(mutex_);
    if (work_.empty()) {
      return nullptr;
    }
    auto next = std::move(work_.front());
    work_.pop_front();
    return next;
  }

  const std::thread::id mainThread_ = std::this_thread::get_id();
  mutable std::mutex mutex_;
  std::deque<std::function<void()>> work_;
};

}  // namespace nivlo
