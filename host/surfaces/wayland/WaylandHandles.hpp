// Owning pointers for the objects of a Wayland connection.
#pragma once

#include <memory>

#include <fractional-scale-v1-client-protocol.h>
#include <viewporter-client-protocol.h>
#include <wayland-client.h>
#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

namespace nivlo {

/// Sends the request that ends the object, where it has one.
struct WaylandEnd {
  void operator()(wl_display* object) const { wl_display_disconnect(object); }
  void operator()(wl_registry* object) const { wl_registry_destroy(object); }
  void operator()(wl_compositor* object) const { wl_compositor_destroy(object); }
  void operator()(wl_shm* object) const { wl_shm_destroy(object); }
  void operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }
  void operator()(wl_buffer* object) const { wl_buffer_destroy(object); }
  void operator()(wl_surface* object) const { wl_surface_destroy(object); }
  void operator()(wl_region* object) const { wl_region_destroy(object); }
  void operator()(wl_callback* object) const { wl_callback_destroy(object); }
  void operator()(wl_output* object) const {
    if (wl_output_get_version(object) >= WL_OUTPUT_RELEASE_SINCE_VERSION) {
      wl_output_release(object);
    } else {
      wl_output_destroy(object);
    }
  }
  void operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }
  void operator()(wp_viewport* object) const { wp_viewport_destroy(object); }
  void operator()(wp_fractional_scale_manager_v1* object) const {
    wp_fractional_scale_manager_v1_destroy(object);
  }
  void operator()(wp_fractional_scale_v1* object) const { wp_fractional_scale_v1_destroy(object); }
  void operator()(zwlr_layer_shell_v1* object) const {
    if (zwlr_layer_shell_v1_get_version(object) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION) {
      zwlr_layer_shell_v1_destroy(object);
    } else {
      wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
    }
  }
  void operator()(zwlr_layer_surface_v1* object) const { zwlr_layer_surface_v1_destroy(object); }
  void operator()(zwlr_foreign_toplevel_manager_v1* object) const {
    zwlr_foreign_toplevel_manager_v1_destroy(object);
  }
  void operator()(zwlr_foreign_toplevel_handle_v1* object) const {
    zwlr_foreign_toplevel_handle_v1_destroy(object);
  }
  void operator()(xdg_wm_base* object) const { xdg_wm_base_destroy(object); }
  void operator()(xdg_surface* object) const { xdg_surface_destroy(object); }
  void operator()(xdg_toplevel* object) const { xdg_toplevel_destroy(object); }
};

template <typename T>
using WaylandHandle = std::unique_ptr<T, WaylandEnd>;

}  // namespace nivlo
