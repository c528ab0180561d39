// The calling thread and its name.
#pragma once

#include <optional>
#include <string>

namespace nivlo {

/// A thread, as far as naming it goes. Every thread has an object of its own, so nothing here needs a lock.
class NSThread {
 public:
  /// The calling thread. The object lives until that thread ends; do not hand it to another one.
  static NSThread& currentThread();

  /// Returns whether the caller is on the main thread. Always true while no main queue is installed.
  static bool isMainThread();

  NSThread(const NSThread&) = delete;
  NSThread& operator=(const NSThread&) = delete;

  /// Absent until a name is set. An empty name is a name too.
  const std::optional<std::string>& name() const { return name_; }

  /// Names the thread in the lines it logs, and for debuggers and `top -H`, which show the name's first 15
  /// bytes, cut at a whole character. The process's first thread is named in the log only: the system takes
  /// that thread's name for the name of the whole program.
  void setName(std::optional<std::string> name);

 private:
  NSThread() = default;

  std::optional<std::string> name_;
};

}  // namespace nivlo
