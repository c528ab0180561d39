// The main thread's event loop, as much of it as the frameworks need.
#pragma once

#include <functional>

namespace nivlo {

class MainQueueDriver {
 public:
  virtual ~MainQueueDriver() = default;

  /// Runs `work` on the main thread, after whatever was posted before it. Callable from any thread; returns
  /// at once.
  virtual void post(std::function<void()> work) = 0;

  /// Whether the caller is on the main thread.
  virtual bool isMainThread() const = 0;
};

}  // namespace nivlo
