// Owners of what libpipewire hands out.
#pragma once

#include <pipewire/pipewire.h>

namespace nivlo {

/// Frees any of libpipewire's proxies: registries, nodes. Serves Owned<>.
inline void destroyProxy(void* proxy) { pw_proxy_destroy(static_cast<pw_proxy*>(proxy)); }

/// An entry in the listener list of one of libpipewire's objects, removed with its owner. It must go before
/// the object does, so declare it after the object.
class ListenerHook {
 public:
  ListenerHook() = default;
  ~ListenerHook() { reset(); }
  ListenerHook(const ListenerHook&) = delete;
  ListenerHook& operator=(const ListenerHook&) = delete;

  /// The empty hook to pass to one of the pw_..._add_listener calls. An entry that was there is removed
  /// first.
  spa_hook* claim() {
    reset();
    hook_ = {};
    claimed_ = true;
    return &hook_;
  }

  /// Removes the entry; no-op when there is none.
  void reset() {
    if (claimed_) {
      spa_hook_remove(&hook_);
    }
    claimed_ = false;
  }

 private:
  spa_hook hook_{};
  bool claimed_ = false;
};

}  // namespace nivlo
