// Work queues: serial ones, each with a thread of its own, and the main one.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace nivlo {

/// A queue that runs work in order, one piece after the other. Made by dispatch_queue_create.
class DispatchQueue {
 public:
  virtual ~DispatchQueue() = default;
  /// Puts the work at the queue's end, as dispatch_async does.
  virtual void async(std::function<void()> work) = 0;
  /// The name that the queue was made with, which its thread bears too; "main" for the main queue.
  virtual std::string label() const = 0;
};

/// A reference to a queue.
using dispatch_queue_t = std::shared_ptr<DispatchQueue>;

/// Makes a serial queue: a thread, named after the label, that runs the queue's work in order. When the last
/// reference to the queue goes, the work that is queued still runs before the thread ends. The caller who
/// drops that reference waits for it, unless it is the queue's own thread.
dispatch_queue_t dispatch_queue_create(std::string_view label);

/// The queue of the main thread's event loop. Drops the work that it is given while no main queue driver is
/// installed.
dispatch_queue_t dispatch_get_main_queue();

/// Adds the work to the end of the queue and returns at once. Callable from any thread. Does nothing for a
/// null queue. The work must not throw.
void dispatch_async(const dispatch_queue_t& queue, std::function<void()> work);

/// Returns whether the caller is on the main thread. Always true while no main queue driver is installed.
bool isMainThread();

/// Makes the object shared, and has it destroyed on the main thread no matter which thread drops the last
/// reference. That may be a background thread that holds one for a moment, by promoting a weak reference.
template <typename Object>
std::shared_ptr<Object> ownedByMainThread(std::unique_ptr<Object> object) {
  return std::shared_ptr<Object>(object.release(), [](Object* last) {
    if (isMainThread()) {
      delete last;
    } else {
      dispatch_async(dispatch_get_main_queue(), [last] { delete last; });
    }
  });
}

}  // namespace nivlo
