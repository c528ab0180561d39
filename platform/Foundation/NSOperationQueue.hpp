// A queue of operations off the main thread.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Foundation/SerialWorker.hpp"

namespace nivlo {

/// Runs its operations one at a time, in order, on a thread of its own named "operations".
class NSOperationQueue {
 public:
  static std::shared_ptr<NSOperationQueue> init() { return std::make_shared<NSOperationQueue>(); }

  /// Callable from any thread.
  void addOperation(std::function<void()> operation) { worker_.post(std::move(operation)); }

 private:
  SerialWorker worker_{"operations"};
};

}  // namespace nivlo
