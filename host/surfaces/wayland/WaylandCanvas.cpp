#include "host/surfaces/wayland/WaylandCanvas.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace nivlo {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// A surface is starved after waiting this long for the compositor to ask for a picture: many frames on any
/// screen, yet short enough to close the camera within a second of being hidden.
constexpr milliseconds kStarvation{400};
/// Some compositors ask even a hidden surface for a picture once a second, so starvation ends only when the
/// compositor asks this soon after the last picture.
constexpr milliseconds kPromptly{150};
constexpr int kFractionalUnit = 120;  // as wp_fractional_scale_v1 defines it

milliseconds since(steady_clock::time_point then) {
  return std::chrono::duration_cast<milliseconds>(steady_clock::now() - then);
}

}  // namespace

/// Keeps its picture from being drawn into while the compositor may read it.
struct WaylandCanvas::Buffer {
  std::shared_ptr<ShmPictures> pictures;
  int index;
  PixelRect part;
  WaylandHandle<wl_buffer> handle;
  bool busy = false;

  ~Buffer() { setBusy(false); }

  void setBusy(bool value) {
    if (value != std::exchange(busy, value)) {
      value ? pictures->hold(index) : pictures->release(index);
    }
  }
};

const wl_callback_listener WaylandCanvas::kFrameListener{
    [](void* data, wl_callback*, std::uint32_t) { static_cast<WaylandCanvas*>(data)->frameDone(); }};

const wl_buffer_listener WaylandCanvas::kBufferListener{
    [](void* data, wl_buffer*) { static_cast<Buffer*>(data)->setBusy(false); }};

const wp_fractional_scale_v1_listener WaylandCanvas::kScaleListener{
    [](void* data, wp_fractional_scale_v1*, std::uint32_t scale) {
      static_cast<WaylandCanvas*>(data)->fractionalScale_ = static_cast<double>(scale) / kFractionalUnit;
    }};

WaylandCanvas::WaylandCanvas(const WaylandGlobals& globals, Handlers handlers)
    : globals_(globals),
      handlers_(std::move(handlers)),
      surface_(wl_compositor_create_surface(globals.compositor.get())) {
  if (globals.viewporter) {
    viewport_.reset(wp_viewporter_get_viewport(globals.viewporter.get(), surface_.get()));
  }
  if (globals.fractionalScale && viewport_) {
    fractional_.reset(
        wp_fractional_scale_manager_v1_get_fractional_scale(globals.fractionalScale.get(), surface_.get()));
    wp_fractional_scale_v1_add_listener(fractional_.get(), &kScaleListener, this);
  }
}

WaylandCanvas::~WaylandCanvas() = default;

void WaylandCanvas::resize(int width, int height, int scale) {
  width_ = width;
  height_ = height;
  scale_ = scale;
  if (viewport_) {
    wp_viewport_set_destination(viewport_.get(), width, height);
  } else {
    wl_surface_set_buffer_scale(surface_.get(), scale);
  }
  markOpaque();
}

void WaylandCanvas::markOpaque() {
  const WaylandHandle<wl_region> all(wl_compositor_create_region(globals_.compositor.get()));
  wl_region_add(all.get(), 0, 0, width_, height_);
  wl_surface_set_opaque_region(surface_.get(), all.get());
}

PictureSize WaylandCanvas::pixelSize() const {
  const double scale = viewport_ && fractionalScale_ > 0 ? fractionalScale_ : scale_;
  return {static_cast<int>(std::lround(width_ * scale)), static_cast<int>(std::lround(height_ * scale))};
}

/// Cuts the part out by the buffer's offset and stride in the shared memory. A viewport's source rectangle
/// would do the same, but some software renderers ignore its origin.
WaylandCanvas::Buffer& WaylandCanvas::bufferOf(const ShownPicture& picture, PixelRect part) {
  const auto isOf = [&](const Buffer& buffer) {
    return buffer.pictures == picture.pictures && buffer.part == part;
  };
  std::erase_if(buffers_, [&](const auto& buffer) { return !buffer->busy && !isOf(*buffer); });
  for (const auto& buffer : buffers_) {
    if (isOf(*buffer) && buffer->index == picture.index) {
      return *buffer;
    }
  }
  std::unique_ptr<Buffer> buffer(
      new Buffer{picture.pictures, picture.index, part, picture.pictures->makeBuffer(picture.index, part)});
  wl_buffer_add_listener(buffer->handle.get(), &kBufferListener, buffer.get());
  return *buffers_.emplace_back(std::move(buffer));
}

bool WaylandCanvas::holds(const ShownPicture& picture) const {
  return std::any_of(buffers_.begin(), buffers_.end(), [&](const auto& buffer) {
    return buffer->busy && buffer->pictures == picture.pictures && buffer->index == picture.index;
  });
}

void WaylandCanvas::present(const ShownPicture& picture, PixelRect part) {
  auto& buffer = bufferOf(picture, part);
  buffer.setBusy(true);
  wl_surface_attach(surface_.get(), buffer.handle.get(), 0, 0);
  shown_ = picture.sequence;
  requestFrame();
}

/// Commits with everything marked as damaged, so that the compositor has a reason to draw the surface and to
/// ask for the next picture.
void WaylandCanvas::requestFrame() {
  if (wl_surface_get_version(surface_.get()) >= WL_SURFACE_DAMAGE_BUFFER_SINCE_VERSION) {
    wl_surface_damage_buffer(surface_.get(), 0, 0, INT32_MAX, INT32_MAX);
  } else {
    wl_surface_damage(surface_.get(), 0, 0, INT32_MAX, INT32_MAX);
  }
  if (!frame_) {
    frame_.reset(wl_surface_frame(surface_.get()));
    wl_callback_add_listener(frame_.get(), &kFrameListener, this);
    asked_ = steady_clock::now();
  }
  wl_surface_commit(surface_.get());
  if (!watching_ && !starved_) {
    watchForStarvation(kStarvation);
  }
}

void WaylandCanvas::frameDone() {
  frame_.reset();
  if (starved_ && since(asked_) > kPromptly) {
    requestFrame();
    return;
  }
  setStarved(false);
  handlers_.wantsPicture();
}

/// Checks now and then how long the current frame callback has been pending. That takes one timer for many
/// frames rather than one for each.
void WaylandCanvas::watchForStarvation(milliseconds delay) {
  watching_ = true;
  watch_ = EventSource::onTimeout(delay, [this] {
    watching_ = false;
    if (!frame_) {
      return;
    }
    const auto waited = since(asked_);
    if (waited >= kStarvation) {
      setStarved(true);
    } else {
      watchForStarvation(kStarvation - waited);
    }
  });
}

void WaylandCanvas::setStarved(bool starved) {
  if (starved != std::exchange(starved_, starved)) {
    handlers_.starvationChanged();
  }
}

}  // namespace nivlo
