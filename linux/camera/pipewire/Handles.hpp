// Owners of libpipewire's objects.
#pragma once

#include <memory>

#include <pipewire/pipewire.h>

namespace nivlo::pipewire {

template <auto destroy>
struct Deleter {
  template <typename T>
  void operator()(T* object) const {
    destroy(object);
  }
};

using ThreadLoopPtr = std::unique_ptr<pw_thread_loop, Deleter<pw_thread_loop_destroy>>;
using ContextPtr = std::unique_ptr<pw_context, Deleter<pw_context_destroy>>;
using CorePtr = std::unique_ptr<pw_core, Deleter<pw_core_disconnect>>;

struct ProxyDeleter {
  void operator()(void* proxy) const { pw_proxy_destroy(static_cast<pw_proxy*>(proxy)); }
};
using RegistryPtr = std::unique_ptr<pw_registry, ProxyDeleter>;
using NodePtr = std::unique_ptr<pw_node, ProxyDeleter>;

/// A place in an object's list of listeners. It must be given up before the object goes, so it is declared
/// after it.
class Listener {
 public:
  Listener() = default;
  ~Listener() { reset(); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  /// For the call that adds the listener.
  spa_hook* claim() {
    reset();
    hook_ = {};
    claimed_ = true;
    return &hook_;
  }

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

}  // namespace nivlo::pipewire
