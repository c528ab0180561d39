#include "host/surfaces/wayland/WaylandPainter.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/render/PictureFit.hpp"

namespace nivlo {

namespace {

bool fills(const PictureFit& fit, CGSize surface) {
  constexpr double kPart = 0.5;  // of a pixel
  return std::abs(fit.seen.origin.x) < kPart && std::abs(fit.seen.origin.y) < kPart &&
         std::abs(fit.seen.size.width - surface.width) < kPart &&
         std::abs(fit.seen.size.height - surface.height) < kPart;
}

PixelRect wholeOf(PictureSize size) { return {0, 0, size.width, size.height}; }

}  // namespace

WaylandPainter::WaylandPainter(const WaylandGlobals& globals, std::function<void()> drawn)
    : globals_(globals), drawn_(std::move(drawn)) {}

WaylandPainter::~WaylandPainter() = default;

void WaylandPainter::show(LaidOutView view) {
  view_ = std::move(view);
  clock_.emplace(*view_.view, [this] {
    frameWaits_ = true;
    paint();
  });
}

void WaylandPainter::remove(WaylandCanvas* canvas) {
  std::erase(canvases_, canvas);
  own_.erase(canvas);
}

std::optional<WaylandPainter::Filling> WaylandPainter::fillingOf(const WaylandCanvas& canvas) const {
  if (!canvas.canScale() || !view_.view) {
    return std::nullopt;
  }
  const auto previews = placedPreviews(view_, canvas.size());
  if (previews.size() != 1) {
    return std::nullopt;
  }
  const auto& [layer, rect] = previews.front();
  const auto frame = layer->newestFrame();
  const auto fit = frame.picture
                       ? fitPicture(uprightSize(frame.geometry), layer->videoGravity(), rect, canvas.size())
                       : std::nullopt;
  return fit && fills(*fit, canvas.size()) ? std::optional(Filling{layer, rect}) : std::nullopt;
}

void WaylandPainter::paint() {
  std::vector<WaylandCanvas*> sharing;
  bool drawnAnew = false;
  for (auto* canvas : canvases_) {
    if (!canvas->wantsPicture()) {
      continue;
    }
    if (fillingOf(*canvas)) {
      sharing.push_back(canvas);
    } else if (frameWaits_) {
      paintOwn(*canvas);
      drawnAnew = true;
    }
  }
  if (!sharing.empty()) {
    paintShared(sharing);
  } else if (drawnAnew) {
    frameWaits_ = false;
    drawn_();
  }
}

void WaylandPainter::paintShared(const std::vector<WaylandCanvas*>& wanting) {
  const auto filling = fillingOf(*wanting.front());
  const bool drawnAnew = frameWaits_ && convertNewest(filling->layer->newestFrame());
  for (auto* canvas : wanting) {
    if (newest_.pictures && canvas->shown() != newest_.sequence) {
      paintFrom(newest_, *canvas);
    }
  }
  if (drawnAnew) {
    drawn_();
  }
}

bool WaylandPainter::convertNewest(const CaptureFrame& frame) {
  const auto room = roomFor(shared_, uprightSize(frame.geometry));
  if (!room) {
    freeHeldPictures();
    return false;
  }
  converter_.convert(frame, room->pictures->pixels(room->index));
  newest_ = *room;
  frameWaits_ = false;
  return true;
}

std::optional<ShownPicture> WaylandPainter::roomFor(std::shared_ptr<ShmPictures>& pictures,
                                                    PictureSize size) {
  if (!pictures || pictures->size() != size) {
    pictures = ShmPictures::make(globals_.shm.get(), size);
  }
  const auto index = pictures ? pictures->free() : std::nullopt;
  return index ? std::optional(ShownPicture{pictures, *index, ++sequence_}) : std::nullopt;
}

/// A canvas that is not asked for pictures may keep an old one for ever; it gets the newest in its place.
void WaylandPainter::freeHeldPictures() {
  for (auto* canvas : canvases_) {
    if (!canvas->wantsPicture() && canvas->isConfigured() && newest_.pictures && !canvas->holds(newest_)) {
      paintFrom(newest_, *canvas);
    }
  }
}

bool WaylandPainter::paintFrom(const ShownPicture& picture, WaylandCanvas& canvas) {
  const auto filling = fillingOf(canvas);
  const auto fit = filling ? fitPicture(picture.pictures->size(), filling->layer->videoGravity(),
                                        filling->rect, canvas.size())
                           : std::nullopt;
  if (fit) {
    canvas.present(picture, toPixels(fit->source, picture.pictures->size()));
  }
  return fit.has_value();
}

void WaylandPainter::paintOwn(WaylandCanvas& canvas) {
  const auto room = roomFor(own_[&canvas], canvas.pixelSize());
  if (room) {
    renderer_.render(view_, room->pictures->pixels(room->index));
    canvas.present(*room, wholeOf(room->pictures->size()));
  }
}

void WaylandPainter::repaint(WaylandCanvas& canvas) {
  if (newest_.pictures && paintFrom(newest_, canvas)) {
    return;
  }
  if (view_.view) {
    paintOwn(canvas);
  } else {
    paintBlack(canvas);
  }
}

/// One pixel is enough where the compositor stretches it. New memory is black.
void WaylandPainter::paintBlack(WaylandCanvas& canvas) {
  const auto room = roomFor(own_[&canvas], canvas.canScale() ? PictureSize{1, 1} : canvas.pixelSize());
  if (room) {
    canvas.present(*room, wholeOf(room->pictures->size()));
  }
}

}  // namespace nivlo
