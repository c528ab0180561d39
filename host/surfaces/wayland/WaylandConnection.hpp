// A connection to a Wayland compositor.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/surfaces/wayland/WaylandEvents.hpp"
#include "host/surfaces/wayland/WaylandHandles.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// What the compositor offers; all but the first two may be absent.
struct WaylandGlobals {
  WaylandHandle<wl_compositor> compositor;
  WaylandHandle<wl_shm> shm;
  WaylandHandle<wp_viewporter> viewporter;
  WaylandHandle<wp_fractional_scale_manager_v1> fractionalScale;
  WaylandHandle<zwlr_layer_shell_v1> layerShell;
  WaylandHandle<zwlr_foreign_toplevel_manager_v1> toplevels;
  WaylandHandle<xdg_wm_base> windows;
};

/// A screen. It stays where it is while it exists.
class WaylandOutput {
 public:
  WaylandOutput(std::uint32_t global, WaylandHandle<wl_output> output, std::function<void()> changed);
  WaylandOutput(const WaylandOutput&) = delete;
  WaylandOutput& operator=(const WaylandOutput&) = delete;

  std::uint32_t global() const { return global_; }
  wl_output* handle() const { return output_.get(); }
  /// For example "eDP-1"; empty with a compositor that does not tell.
  const std::string& name() const { return name_; }
  /// Whole, rounded up where the compositor scales by a fraction.
  int scale() const { return scale_; }
  /// Pixels, as the picture stands on it.
  CGSize size() const { return size_; }

 private:
  static const wl_output_listener kListener;

  std::uint32_t global_;
  WaylandHandle<wl_output> output_;
  std::function<void()> changed_;
  std::string name_;
  int scale_ = 1;
  bool onItsSide_ = false;
  CGSize mode_;
  CGSize size_;
};

/// Main thread only.
class WaylandConnection {
 public:
  struct Handlers {
    std::function<void()> outputsChanged;  ///< one came, went, or changed its size, scale or name
    std::function<void(const std::string& cause)> lost;
  };

  /// Null, with the cause and the remedy in `*error`, where no compositor can be reached or it lacks what
  /// every client needs. The outputs are known when it returns.
  static std::unique_ptr<WaylandConnection> open(std::string* error);
  WaylandConnection(const WaylandConnection&) = delete;
  WaylandConnection& operator=(const WaylandConnection&) = delete;

  const WaylandGlobals& globals() const { return globals_; }
  const std::vector<std::unique_ptr<WaylandOutput>>& outputs() const { return outputs_; }

  /// Lets events come from now on, through the main loop.
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
  std::vector<std::unique_ptr<WaylandOutput>> outputs_;
  Handlers handlers_;
  std::optional<WaylandEvents> events_;
};

}  // namespace nivlo
