// A queue for work off the main thread.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Foundation/SerialWorker.hpp"

namespace nivlo {

/// Runs its operations one at a time, in order, on a thread of its own named "operations".
class NSOperationQueue {
 public:
  /// Makes a queue and starts its thread. The queue's destructor waits until the operations in it have run,
  /// except on that thread.
  static std::shared_ptr<NSOperationQueue> init() { return std::make_shared<NSOperationQueue>(); }

  /// Adds an operation and returns at once. The operation must not throw. Callable from any thread.
  void addOperation(std::function<void()> operation) { worker_.post(std::move(operation)); }

 private:
  SerialWorker worker_{"operations"};
};

}  // namespace nivlo
