// Values attached to objects from outside.
#pragma once

#include <any>
#include <map>
#include <mutex>
#include <utility>

namespace nivlo {

/// The base of objects to which others may attach values. That is how a category, a set of functions that
/// extends a class from outside, keeps state of its own in an object. Callable from any thread: a reader gets
/// either the old value or the new one.
class NSObject {
 public:
  virtual ~NSObject() = default;

  /// Attaches the value under a key, in place of an earlier one; an empty value clears it. The key is an
  /// address that nobody else uses, such as that of a static variable. To attach an object without keeping it
  /// alive, attach a weak pointer to it.
  void setAssociatedObject(const void* key, std::any value) {
    const std::lock_guard lock(mutex_);
    associated_[key].swap(value);
  }

  /// Returns a copy of the value under the key; empty when there is none.
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
