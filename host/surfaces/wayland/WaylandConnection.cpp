#include "host/surfaces/wayland/WaylandConnection.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {

namespace {

constexpr std::uint32_t kCompositorVersion = 4;  // damage in buffer pixels
constexpr std::uint32_t kOutputVersion = 4;      // output names
constexpr std::uint32_t kLayerShellVersion = 4;
constexpr std::uint32_t kToplevelsVersion = 3;  // a dialog's parent

template <typename T>
void bindTo(WaylandHandle<T>& handle, wl_registry* registry, std::uint32_t global,
            const wl_interface& interface, std::uint32_t version) {
  if (!handle) {
    handle.reset(static_cast<T*>(wl_registry_bind(registry, global, &interface, version)));
  }
}

void answerPing(void*, xdg_wm_base* base, std::uint32_t serial) { xdg_wm_base_pong(base, serial); }

constexpr xdg_wm_base_listener kPingListener{answerPing};

}  // namespace

const wl_output_listener WaylandOutput::kListener{
    [](void* data, wl_output*, int, int, int, int, int, const char*, const char*, int transform) {
      auto& self = *static_cast<WaylandOutput*>(data);
      self.quarterTurned_ = transform % 2 != 0;  // the odd ones of wl_output.transform
    },
    [](void* data, wl_output*, std::uint32_t flags, int width, int height, int) {
      if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
        static_cast<WaylandOutput*>(data)->mode_ = {static_cast<double>(width), static_cast<double>(height)};
      }
    },
    [](void* data, wl_output*) {
      auto& self = *static_cast<WaylandOutput*>(data);
      self.size_ = self.quarterTurned_ ? CGSize{self.mode_.height, self.mode_.width} : self.mode_;
      self.changed_();
    },
    [](void* data, wl_output*, int scale) { static_cast<WaylandOutput*>(data)->scale_ = scale; },
    [](void* data, wl_output*, const char* name) { static_cast<WaylandOutput*>(data)->name_ = name; },
    [](void*, wl_output*, const char*) {}};

WaylandOutput::WaylandOutput(std::uint32_t global, WaylandHandle<wl_output> output,
                             std::function<void()> changed)
    : global_(global), output_(std::move(output)), changed_(std::move(changed)) {
  wl_output_add_listener(output_.get(), &kListener, this);
}

const wl_registry_listener WaylandConnection::kRegistryListener{
    [](void* data, wl_registry* registry, std::uint32_t global, const char* interface,
       std::uint32_t version) {
      static_cast<WaylandConnection*>(data)->bind(registry, global, interface, version);
    },
    [](void* data, wl_registry*, std::uint32_t global) {
      static_cast<WaylandConnection*>(data)->remove(global);
    }};

std::unique_ptr<WaylandConnection> WaylandConnection::open(std::string* error) {
  WaylandHandle<wl_display> handle(wl_display_connect(nullptr));
  if (!handle) {
    *error = "cannot connect to a Wayland compositor; check WAYLAND_DISPLAY, or choose another --surface";
    return nullptr;
  }
  auto* display = handle.get();
  std::unique_ptr<WaylandConnection> connection(new WaylandConnection(std::move(handle)));
  connection->registry_.reset(wl_display_get_registry(display));
  wl_registry_add_listener(connection->registry_.get(), &kRegistryListener, connection.get());
  wl_display_roundtrip(display);  // for the globals
  wl_display_roundtrip(display);  // for what the outputs say of themselves
  if (!connection->globals_.compositor || !connection->globals_.shm) {
    *error =
        "the Wayland compositor lacks wl_compositor or wl_shm, without which nothing can be drawn; choose "
        "another "
        "--surface";
    return nullptr;
  }
  return connection;
}

WaylandHandle<zwlr_foreign_toplevel_manager_v1> WaylandConnection::bindToplevels() const {
  WaylandHandle<zwlr_foreign_toplevel_manager_v1> manager;
  if (toplevelsGlobal_ != 0) {
    bindTo(manager, registry_.get(), toplevelsGlobal_, zwlr_foreign_toplevel_manager_v1_interface,
           toplevelsVersion_);
  }
  return manager;
}

void WaylandConnection::start(Handlers handlers) {
  handlers_ = std::move(handlers);
  events_.emplace(display_.get(), handlers_.lost);
}

void WaylandConnection::bind(wl_registry* registry, std::uint32_t global, const std::string& interface,
                             std::uint32_t version) {
  auto& all = globals_;
  if (interface == wl_compositor_interface.name) {
    bindTo(all.compositor, registry, global, wl_compositor_interface, std::min(version, kCompositorVersion));
  } else if (interface == wl_shm_interface.name) {
    bindTo(all.shm, registry, global, wl_shm_interface, 1);
  } else if (interface == wp_viewporter_interface.name) {
    bindTo(all.viewporter, registry, global, wp_viewporter_interface, 1);
  } else if (interface == wp_fractional_scale_manager_v1_interface.name) {
    bindTo(all.fractionalScale, registry, global, wp_fractional_scale_manager_v1_interface, 1);
  } else if (interface == zwlr_layer_shell_v1_interface.name) {
    bindTo(all.layerShell, registry, global, zwlr_layer_shell_v1_interface,
           std::min(version, kLayerShellVersion));
  } else if (interface == zwlr_foreign_toplevel_manager_v1_interface.name) {
    toplevelsGlobal_ = global;
    toplevelsVersion_ = std::min(version, kToplevelsVersion);
  } else if (interface == xdg_wm_base_interface.name) {
    bindTo(all.windows, registry, global, xdg_wm_base_interface, 1);
    xdg_wm_base_add_listener(all.windows.get(), &kPingListener, nullptr);
  } else if (interface == zxdg_decoration_manager_v1_interface.name) {
    bindTo(all.decorations, registry, global, zxdg_decoration_manager_v1_interface, 1);
  } else if (interface == wl_seat_interface.name && !all.escapeKey) {
    WaylandHandle<wl_seat> seat;
    bindTo(seat, registry, global, wl_seat_interface, EscapeKey::kSeatVersion);
    all.escapeKey = std::make_unique<EscapeKey>(std::move(seat));
  } else if (interface == wl_output_interface.name) {
    WaylandHandle<wl_output> output;
    bindTo(output, registry, global, wl_output_interface, std::min(version, kOutputVersion));
    outputs_.push_back(
        std::make_unique<WaylandOutput>(global, std::move(output), [this] { outputsChanged(); }));
  }
}

void WaylandConnection::remove(std::uint32_t global) {
  const auto gone = std::find_if(outputs_.begin(), outputs_.end(),
                                 [&](const auto& output) { return output->global() == global; });
  if (gone == outputs_.end()) {
    return;
  }
  // The handler destroys what is drawn on the output, which must happen before the output itself goes.
  const auto output = std::move(*gone);
  outputs_.erase(gone);
  outputsChanged();
}

void WaylandConnection::outputsChanged() {
  if (handlers_.outputsChanged) {
    handlers_.outputsChanged();
  }
}

}  // namespace nivlo
