// The thread that runs.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace nivlo {

/// Each thread sees only its own object, so nothing here needs a lock.
class NSThread {
 public:
  /// The caller's thread. Valid until that thread ends.
  static NSThread& currentThread();
  /// Whether the caller is on the main thread; true while no main queue is installed.
  static bool isMainThread();

  NSThread(const NSThread&) = delete;
  NSThread& operator=(const NSThread&) = delete;

  /// Nothing until a name is set; an empty name is a name.
  const std::optional<std::string>& name() const { return name_; }
  void setName(std::optional<std::string> name) { name_ = std::move(name); }

 private:
  NSThread() = default;

  std::optional<std::string> name_;
};

}  // namespace nivlo
