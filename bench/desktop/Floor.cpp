#include "bench/desktop/Floor.hpp"

#include <chrono>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

#include "host/loop/EventSource.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/surfaces/wayland/WaylandCanvas.hpp"

namespace nivlo::bench {

namespace {

/// Presents one of two pictures in turn, at a camera's rate, if the compositor has asked for one by then.
class Recommitter {
 public:
  explicit Recommitter(WaylandConnection& connection)
      : canvas_(connection.globals(), {[] {}, [] {}}),
        layer_(zwlr_layer_shell_v1_get_layer_surface(connection.globals().layerShell.get(), canvas_.surface(),
                                                     nullptr, ZWLR_LAYER_SHELL_V1_LAYER_BACKGROUND, "floor")),
        pictures_(ShmPictures::make(connection.globals().shm.get(), {1280, 720})) {
    static constexpr zwlr_layer_surface_v1_listener kListener{
        [](void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t width,
           std::uint32_t height) {
          zwlr_layer_surface_v1_ack_configure(layer, serial);
          static_cast<Recommitter*>(data)->canvas_.resize(static_cast<int>(width), static_cast<int>(height),
                                                          1);
        },
        [](void*, zwlr_layer_surface_v1*) {}};
    zwlr_layer_surface_v1_add_listener(layer_.get(), &kListener, this);
    zwlr_layer_surface_v1_set_anchor(layer_.get(), 15);
    zwlr_layer_surface_v1_set_exclusive_zone(layer_.get(), -1);
    wl_surface_commit(canvas_.surface());
    tick();
  }

 private:
  void tick() {
    next_ += std::chrono::microseconds(33333);
    timer_ = EventSource::onTimeout(
        std::chrono::duration_cast<std::chrono::milliseconds>(next_ - std::chrono::steady_clock::now()),
        [this] { tick(); });
    if (canvas_.wantsPicture()) {
      ++sequence_;
      canvas_.present({pictures_, static_cast<int>(sequence_ % 2), sequence_}, {0, 0, 1280, 720});
    }
  }

  WaylandCanvas canvas_;
  WaylandHandle<zwlr_layer_surface_v1> layer_;
  std::shared_ptr<ShmPictures> pictures_;
  unsigned sequence_ = 0;
  std::chrono::steady_clock::time_point next_ = std::chrono::steady_clock::now();
  EventSource timer_;
};

}  // namespace

int runFloor() {
  MainLoop loop;
  std::string error;
  const auto connection = WaylandConnection::open(&error);
  if (!connection || !connection->globals().layerShell) {
    std::cerr << error << '\n';
    return 1;
  }
  connection->start({.outputsChanged = nullptr, .lost = [&](const std::string&) { loop.quit(); }});
  const Recommitter recommitter(*connection);
  loop.run();
  return 0;
}

}  // namespace nivlo::bench
