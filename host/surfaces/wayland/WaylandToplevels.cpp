#include "host/surfaces/wayland/WaylandToplevels.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>

namespace nivlo {

struct WaylandToplevels::Toplevel {
  WaylandToplevels& list;
  WaylandHandle<zwlr_foreign_toplevel_handle_v1> handle;

  struct State {
    bool maximized = false;
    bool minimized = false;
    bool activated = false;
    bool fullscreen = false;
  };
  State pending;  ///< reported, and in force once the compositor says that the change is complete
  State state;
  std::set<wl_output*> outputs;
  zwlr_foreign_toplevel_handle_v1* parent = nullptr;
  unsigned lastActive = 0;
};

namespace {

template <typename Toplevel>
Toplevel& of(void* data) {
  return *static_cast<Toplevel*>(data);
}

}  // namespace

const zwlr_foreign_toplevel_manager_v1_listener WaylandToplevels::kManagerListener{
    [](void* data, zwlr_foreign_toplevel_manager_v1*, zwlr_foreign_toplevel_handle_v1* handle) {
      static_cast<WaylandToplevels*>(data)->add(handle);
    },
    [](void*, zwlr_foreign_toplevel_manager_v1*) {}};

const zwlr_foreign_toplevel_handle_v1_listener WaylandToplevels::kToplevelListener{
    .title = [](void*, zwlr_foreign_toplevel_handle_v1*, const char*) {},
    .app_id = [](void*, zwlr_foreign_toplevel_handle_v1*, const char*) {},
    .output_enter = [](void* data, zwlr_foreign_toplevel_handle_v1*,
                       wl_output* output) { of<Toplevel>(data).outputs.insert(output); },
    .output_leave = [](void* data, zwlr_foreign_toplevel_handle_v1*,
                       wl_output* output) { of<Toplevel>(data).outputs.erase(output); },
    .state =
        [](void* data, zwlr_foreign_toplevel_handle_v1*, wl_array* states) {
          const auto* values = static_cast<const std::uint32_t*>(states->data);
          const auto* end = values + states->size / sizeof(*values);
          const auto has = [&](std::uint32_t state) { return std::find(values, end, state) != end; };
          of<Toplevel>(data).pending = {has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MAXIMIZED),
                                        has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED),
                                        has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED),
                                        has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_FULLSCREEN)};
        },
    .done =
        [](void* data, zwlr_foreign_toplevel_handle_v1*) {
          auto& toplevel = of<Toplevel>(data);
          toplevel.list.apply(toplevel);
        },
    .closed =
        [](void* data, zwlr_foreign_toplevel_handle_v1*) {
          const auto& toplevel = of<Toplevel>(data);
          toplevel.list.remove(toplevel);
        },
    .parent = [](void* data, zwlr_foreign_toplevel_handle_v1*,
                 zwlr_foreign_toplevel_handle_v1* parent) { of<Toplevel>(data).parent = parent; }};

WaylandToplevels::WaylandToplevels(WaylandHandle<zwlr_foreign_toplevel_manager_v1> manager,
                                   std::function<void()> changed)
    : manager_(std::move(manager)), changed_(std::move(changed)) {
  if (manager_) {
    zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &kManagerListener, this);
  }
}

WaylandToplevels::~WaylandToplevels() = default;

void WaylandToplevels::add(zwlr_foreign_toplevel_handle_v1* handle) {
  auto& toplevel =
      *toplevels_.emplace_back(new Toplevel{*this, WaylandHandle<zwlr_foreign_toplevel_handle_v1>(handle)});
  zwlr_foreign_toplevel_handle_v1_add_listener(handle, &kToplevelListener, &toplevel);
}

void WaylandToplevels::apply(Toplevel& toplevel) {
  if (toplevel.pending.activated && !toplevel.state.activated) {
    toplevel.lastActive = ++activations_;
  }
  toplevel.state = toplevel.pending;
  changed_();
}

void WaylandToplevels::remove(const Toplevel& toplevel) {
  std::erase_if(toplevels_, [&](const auto& other) { return other.get() == &toplevel; });
  changed_();
}

const WaylandToplevels::Toplevel* WaylandToplevels::find(
    const zwlr_foreign_toplevel_handle_v1* handle) const {
  const auto found = std::find_if(toplevels_.begin(), toplevels_.end(),
                                  [&](const auto& toplevel) { return toplevel->handle.get() == handle; });
  return found != toplevels_.end() ? found->get() : nullptr;
}

/// A dialog counts for as much as the windows that it belongs to.
Cover WaylandToplevels::coverBy(const Toplevel& toplevel) const {
  auto cover = Cover::Windows;
  const auto* window = &toplevel;
  // No chain of parents is longer than the list, so a compositor that closes one in a circle cannot hang the
  // loop.
  for (std::size_t steps = 0; window && steps < toplevels_.size(); ++steps) {
    if (window->state.fullscreen) {
      return Cover::Fullscreen;
    }
    if (window->state.maximized) {
      cover = Cover::Maximized;
    }
    window = window->parent ? find(window->parent) : nullptr;
  }
  return cover;
}

Cover WaylandToplevels::coverOf(wl_output* output) const {
  if (!manager_) {
    return Cover::Unknown;
  }
  const Toplevel* top = nullptr;
  bool anyActive = false;
  for (const auto& toplevel : toplevels_) {
    anyActive = anyActive || toplevel->state.activated;
    const bool here = !toplevel->state.minimized && toplevel->outputs.contains(output);
    if (here && (!top || toplevel->lastActive >= top->lastActive)) {
      top = toplevel.get();
    }
  }
  if (!top) {
    return Cover::Nothing;
  }
  return anyActive ? coverBy(*top) : Cover::Windows;
}

}  // namespace nivlo
