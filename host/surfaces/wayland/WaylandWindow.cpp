#include "host/surfaces/wayland/WaylandWindow.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace nivlo {

const xdg_surface_listener WaylandWindow::kSurfaceListener{
    [](void* data, xdg_surface*, std::uint32_t serial) {
      static_cast<WaylandWindow*>(data)->configured(serial);
    }};

const xdg_toplevel_listener WaylandWindow::kToplevelListener{
    .configure =
        [](void* data, xdg_toplevel*, int width, int height, wl_array*) {
          auto& options = static_cast<WaylandWindow*>(data)->options_;
          options.width = width > 0 ? width : options.width;
          options.height = height > 0 ? height : options.height;
        },
    .close = [](void* data, xdg_toplevel*) { static_cast<WaylandWindow*>(data)->handlers_.closed(); }};

std::unique_ptr<Surface> WaylandWindow::open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                             std::string* error) {
  auto connection = WaylandConnection::open(error);
  if (!connection) {
    return nullptr;
  }
  if (!connection->globals().windows) {
    *error =
        "this Wayland compositor does not support ordinary windows (xdg_wm_base); choose another --surface";
    return nullptr;
  }
  return std::unique_ptr<Surface>(new WaylandWindow(std::move(connection), options, std::move(handlers)));
}

WaylandWindow::WaylandWindow(std::unique_ptr<WaylandConnection> connection, const SurfaceOptions& options,
                             SurfaceHandlers handlers)
    : options_(options),
      handlers_(std::move(handlers)),
      connection_(std::move(connection)),
      painter_(connection_->globals(), [this] { handlers_.drawn(); }),
      canvas_(connection_->globals(),
              {[this] { painter_.paint(); },
               [this] { handlers_.visible(options_.pause == PausePolicy::Never || !canvas_.isStarved()); }}),
      surface_(xdg_wm_base_get_xdg_surface(connection_->globals().windows.get(), canvas_.surface())),
      toplevel_(xdg_surface_get_toplevel(surface_.get())) {
  xdg_surface_add_listener(surface_.get(), &kSurfaceListener, this);
  xdg_toplevel_add_listener(toplevel_.get(), &kToplevelListener, this);
  xdg_toplevel_set_title(toplevel_.get(), "Nivlo");
  xdg_toplevel_set_app_id(toplevel_.get(), "nivlo");
  const auto& globals = connection_->globals();
  if (globals.decorations) {
    decoration_.reset(
        zxdg_decoration_manager_v1_get_toplevel_decoration(globals.decorations.get(), toplevel_.get()));
    zxdg_toplevel_decoration_v1_set_mode(decoration_.get(), ZXDG_TOPLEVEL_DECORATION_V1_MODE_SERVER_SIDE);
  }
  if (globals.escapeKey) {
    globals.escapeKey->onPressed([this] { handlers_.closed(); });
  }
  fitScreen();
  wl_surface_commit(canvas_.surface());
}

/// On a screen that is not larger, the compositor is asked to fill what its panels leave free.
void WaylandWindow::fitScreen() {
  if (connection_->outputs().empty()) {
    return;
  }
  const auto& output = *connection_->outputs().front();
  const int width = static_cast<int>(output.size().width) / output.scale();
  const int height = static_cast<int>(output.size().height) / output.scale();
  if (width > 0 && height > 0 && (options_.width >= width || options_.height >= height)) {
    options_.width = std::min(options_.width, width);
    options_.height = std::min(options_.height, height);
    xdg_toplevel_set_maximized(toplevel_.get());
  }
}

WaylandWindow::~WaylandWindow() { painter_.remove(&canvas_); }

void WaylandWindow::show(LaidOutView view) {
  painter_.show(std::move(view));
  connection_->start({.outputsChanged = nullptr, .lost = handlers_.lost});
}

void WaylandWindow::configured(std::uint32_t serial) {
  xdg_surface_ack_configure(surface_.get(), serial);
  const bool first = !canvas_.isConfigured();
  canvas_.resize(options_.width, options_.height, 1);
  if (first) {
    painter_.add(&canvas_);
  }
  painter_.repaint(canvas_);
}

}  // namespace nivlo
