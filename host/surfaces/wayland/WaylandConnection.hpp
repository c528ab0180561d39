// A connection to a Wayland compositor.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/surfaces/wayland/EscapeKey.hpp"
#include "host/surfaces/wayland/WaylandEvents.hpp"
#include "host/surfaces/wayland/WaylandHandles.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// The objects that the compositor offers to everybody. All but the first two may be null.
struct WaylandGlobals {
  WaylandHandle<wl_compositor> compositor;
  WaylandHandle<wl_shm> shm;
  WaylandHandle<wp_viewporter> viewporter;
  WaylandHandle<wp_fractional_scale_manager_v1> fractionalScale;
  WaylandHandle<zwlr_layer_shell_v1> layerShell;
  WaylandHandle<xdg_wm_base> windows;
  WaylandHandle<zxdg_decoration_manager_v1> decorations;
  std::unique_ptr<EscapeKey> escapeKey;  ///< of the first seat
};

/// An output of the compositor. Others refer to it, and events arrive at its address, so it never moves.
class WaylandOutput {
 public:
  WaylandOutput(std::uint32_t global, WaylandHandle<wl_output> output, std::function<void()> changed);
  WaylandOutput(const WaylandOutput&) = delete;
  WaylandOutput& operator=(const WaylandOutput&) = delete;

  /// The number by which the registry announces and removes it.
  std::uint32_t global() const { return global_; }
  wl_output* handle() const { return output_.get(); }
  /// For example "eDP-1"; empty if the compositor does not tell.
  const std::string& name() const { return name_; }
  /// The integer scale, which is rounded up if the compositor scales by a fraction.
  int scale() const { return scale_; }
  /// In pixels, with the rotation of the output taken into account; zero if the compositor tells no mode.
  CGSize size() const { return size_; }

 private:
  static const wl_output_listener kListener;

  std::uint32_t global_;
  WaylandHandle<wl_output> output_;
  std::function<void()> changed_;
  std::string name_;
  int scale_ = 1;
  bool quarterTurned_ = false;
  CGSize mode_;
  CGSize size_;
};

/// The connection, its globals and its outputs. Main thread only.
class WaylandConnection {
 public:
  struct Handlers {
    std::function<void()> outputsChanged;  ///< one has come, gone, or changed in size, scale or name
    std::function<void(const std::string& cause)> lost;  ///< called once; see WaylandEvents
  };

  /// Connects to the compositor that WAYLAND_DISPLAY names and waits until it has described its globals and
  /// outputs. Returns null, with the cause and the remedy in `*error`, if none answers or it lacks what every
  /// surface needs.
  static std::unique_ptr<WaylandConnection> open(std::string* error);
  WaylandConnection(const WaylandConnection&) = delete;
  WaylandConnection& operator=(const WaylandConnection&) = delete;

  const WaylandGlobals& globals() const { return globals_; }
  const std::vector<std::unique_ptr<WaylandOutput>>& outputs() const { return outputs_; }

  /// Asks the compositor for the list of its windows. Returns null where it does not offer one. The windows
  /// that are there now are told in the next events, and those that no listener takes are lost: add it at
  /// once.
  WaylandHandle<zwlr_foreign_toplevel_manager_v1> bindToplevels() const;

  /// Delivers events through the main loop from now on. May be called only once.
  void start(Handlers handlers);

 private:
  static const wl_registry_listener kRegistryListener;

  explicit WaylandConnection(WaylandHandle<wl_display> display) : display_(std::move(display)) {}
  void bind(wl_registry* registry, std::uint32_t global, const std::string& interface, std::uint32_t version);
  void remove(std::uint32_t global);
  void outputsChanged();

  WaylandHandle<wl_display> display_;
  WaylandHandle<wl_registry> registry_;
  WaylandGlobals globals_;
  std::uint32_t toplevelsGlobal_ = 0;  ///< 0 where there is none
  std::uint32_t toplevelsVersion_ = 0;
  std::vector<std::unique_ptr<WaylandOutput>> outputs_;
  Handlers handlers_;
  std::optional<WaylandEvents> events_;
};

}  // namespace nivlo
