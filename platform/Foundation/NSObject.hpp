// What every object that categories extend has in common.
#pragma once

#include <any>
#include <map>
#include <mutex>
#include <utility>

namespace nivlo {

/// Values that others attach to an object under a key of their own: that is how a category keeps state. Each
/// read and each write is atomic: a reader sees the old value or the new one, whole.
class NSObject {
 public:
  virtual ~NSObject() = default;

  /// Replaces the value under the key; an empty value clears it. A non-owning attachment is a weak pointer in
  /// the value.
  void setAssociatedObject(const void* key, std::any value) {
    const std::lock_guard lock(mutex_);
    associated_[key].swap(value);
  }

  /// A copy of the value under the key; empty where there is none.
  std::any associatedObject(const void* key) const {
    const std::lock_guard lock(mutex_);
    const auto found = associated_.find(key);
    return found == associated_.end() ? std::any() : found->second;
  }

 private:
  mutable std::mutex mutex_;
  std::map<const void*, std::any> associated_;
};

}  // namespace nivlo
