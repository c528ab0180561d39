// Owning pointers for the objects of a Wayland connection.
#pragma once

#include <fractional-scale-v1-client-protocol.h>
#include <viewporter-client-protocol.h>
#include <wayland-client.h>
#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>
#include <xdg-decoration-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Destroys the object here and, by the request that its interface has for that, in the compositor.
/// Interfaces of an older version may have no such request.
inline void endWaylandObject(wl_display* object) { wl_display_disconnect(object); }
inline void endWaylandObject(wl_registry* object) { wl_registry_destroy(object); }
inline void endWaylandObject(wl_compositor* object) { wl_compositor_destroy(object); }
inline void endWaylandObject(wl_shm* object) { wl_shm_destroy(object); }
inline void endWaylandObject(wl_shm_pool* object) { wl_shm_pool_destroy(object); }
inline void endWaylandObject(wl_buffer* object) { wl_buffer_destroy(object); }
inline void endWaylandObject(wl_surface* object) { wl_surface_destroy(object); }
inline void endWaylandObject(wl_region* object) { wl_region_destroy(object); }
inline void endWaylandObject(wl_callback* object) { wl_callback_destroy(object); }
inline void endWaylandObject(wl_output* object) {
  if (wl_output_get_version(object) >= WL_OUTPUT_RELEASE_SINCE_VERSION) {
    wl_output_release(object);
  } else {
    wl_output_destroy(object);
  }
}
inline void endWaylandObject(wp_viewporter* object) { wp_viewporter_destroy(object); }
inline void endWaylandObject(wp_viewport* object) { wp_viewport_destroy(object); }
inline void endWaylandObject(wp_fractional_scale_manager_v1* object) {
  wp_fractional_scale_manager_v1_destroy(object);
}
inline void endWaylandObject(wp_fractional_scale_v1* object) { wp_fractional_scale_v1_destroy(object); }
inline void endWaylandObject(zwlr_layer_shell_v1* object) {
  if (zwlr_layer_shell_v1_get_version(object) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION) {
    zwlr_layer_shell_v1_destroy(object);
  } else {
    wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
  }
}
inline void endWaylandObject(zwlr_layer_surface_v1* object) { zwlr_layer_surface_v1_destroy(object); }
inline void endWaylandObject(zwlr_foreign_toplevel_manager_v1* object) {
  zwlr_foreign_toplevel_manager_v1_destroy(object);
}
inline void endWaylandObject(zwlr_foreign_toplevel_handle_v1* object) {
  zwlr_foreign_toplevel_handle_v1_destroy(object);
}
inline void endWaylandObject(wl_seat* object) { wl_seat_destroy(object); }
inline void endWaylandObject(wl_keyboard* object) { wl_keyboard_destroy(object); }
inline void endWaylandObject(zxdg_decoration_manager_v1* object) {
  zxdg_decoration_manager_v1_destroy(object);
}
inline void endWaylandObject(zxdg_toplevel_decoration_v1* object) {
  zxdg_toplevel_decoration_v1_destroy(object);
}
inline void endWaylandObject(xdg_wm_base* object) { xdg_wm_base_destroy(object); }
inline void endWaylandObject(xdg_surface* object) { xdg_surface_destroy(object); }
inline void endWaylandObject(xdg_toplevel* object) { xdg_toplevel_destroy(object); }

/// Owns an object of a connection, which must outlive it.
template <typename T>
using WaylandHandle = Owned<T, static_cast<void (*)(T*)>(endWaylandObject)>;

}  // namespace nivlo
