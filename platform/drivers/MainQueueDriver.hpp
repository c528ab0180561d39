// The driver that runs work on the main thread.
#pragma once

#include <functional>

namespace nivlo {

/// The event loop of the main thread, as far as the frameworks need it. Callable from any thread.
class MainQueueDriver {
 public:
  virtual ~MainQueueDriver() = default;

  /// Has the work run on the main thread, after what was posted before it, and returns at once.
  virtual void post(std::function<void()> work) = 0;

  /// Returns whether the caller is on the main thread.
  virtual bool isMainThread() const = 0;
};

}  // namespace nivlo
