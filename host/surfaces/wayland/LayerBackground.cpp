#include "host/surfaces/wayland/LayerBackground.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace nivlo {

namespace {

constexpr std::uint32_t kAllEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                    ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
/// The exclusive zone of a surface that extends below panels instead of stopping at them.
constexpr int kUnderPanels = -1;

}  // namespace

const zwlr_layer_surface_v1_listener LayerBackground::kListener{
    [](void* data, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width, std::uint32_t height) {
      static_cast<LayerBackground*>(data)->configured(serial, static_cast<int>(width),
                                                      static_cast<int>(height));
    },
    [](void* data, zwlr_layer_surface_v1*) { static_cast<LayerBackground*>(data)->closedByCompositor(); }};

LayerBackground::LayerBackground(const WaylandGlobals& globals, const WaylandOutput& output,
                                 WaylandPainter& painter, zwlr_layer_shell_v1_layer layer,
                                 std::function<void()> changed)
    : globals_(globals), output_(output), painter_(painter), layer_(layer), changed_(std::move(changed)) {
  open();
}

LayerBackground::~LayerBackground() { close(); }

void LayerBackground::open() {
  canvas_.emplace(globals_, WaylandCanvas::Handlers{[this] { painter_.paint(); }, [this] { changed_(); }});
  auto* surface = canvas_->surface();
  layerSurface_.reset(zwlr_layer_shell_v1_get_layer_surface(globals_.layerShell.get(), surface,
                                                            output_.handle(), layer_, "wallpaper"));
  zwlr_layer_surface_v1_add_listener(layerSurface_.get(), &kListener, this);
  zwlr_layer_surface_v1_set_anchor(layerSurface_.get(), kAllEdges);
  zwlr_layer_surface_v1_set_exclusive_zone(layerSurface_.get(), kUnderPanels);
  // With an empty input region, clicks fall through to the desktop, which may have menus of its own.
  const WaylandHandle<wl_region> empty(wl_compositor_create_region(globals_.compositor.get()));
  wl_surface_set_input_region(surface, empty.get());
  wl_surface_commit(surface);
}

void LayerBackground::close() {
  if (canvas_) {
    painter_.remove(&*canvas_);
  }
  layerSurface_.reset();
  canvas_.reset();
}

void LayerBackground::configured(std::uint32_t serial, int width, int height) {
  zwlr_layer_surface_v1_ack_configure(layerSurface_.get(), serial);
  reopenDelay_.reset();
  scale_ = output_.scale();
  const bool first = !canvas_->isConfigured();
  // On an output of a few rows, a large scale leaves less than one.
  canvas_->resize(std::max(width, 1), std::max(height, 1), scale_);
  if (first) {
    painter_.add(&*canvas_);
  }
  painter_.repaint(*canvas_);
}

/// KWin 5.27 obeys a change of a surface's layer only when something else restacks its windows, and a click
/// on Plasma's desktop is not that, so a new surface takes the old one's place.
void LayerBackground::setLayer(zwlr_layer_shell_v1_layer layer) {
  layer_ = layer;
  close();
  open();
}

void LayerBackground::outputChanged() {
  if (canvas_ && canvas_->isConfigured() && scale_ != output_.scale()) {
    scale_ = output_.scale();
    const auto size = canvas_->size();
    canvas_->resize(static_cast<int>(size.width), static_cast<int>(size.height), scale_);
    painter_.repaint(*canvas_);
  }
}

void LayerBackground::closedByCompositor() {
  reopening_ = EventSource::onTimeout(reopenDelay_.next(), [this] {
    close();
    open();
  });
}

}  // namespace nivlo
