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

CGRect stretched(CGRect rect, CGSize from, CGSize to) {
  const double x = to.width / from.width;
  const double y = to.height / from.height;
  return {{rect.origin.x * x, rect.origin.y * y}, {rect.size.width * x, rect.size.height * y}};
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

std::optional<PlacedPicture> WaylandPainter::onlyPicture() const {
  if (!view_.view) {
    return std::nullopt;
  }
  auto pictures = placedPictures(view_, view_.size);
  return pictures.size() == 1 ? std::optional(std::move(pictures.front())) : std::nullopt;
}

std::optional<PixelRect> WaylandPainter::fillingPart(const PlacedPicture& placed, PictureSize size,
                                                     const WaylandCanvas& canvas) const {
  if (!canvas.canScale()) {
    return std::nullopt;
  }
  const auto surface = canvas.size();
  const auto rect = stretched(placed.rect, view_.size, surface);
  const auto fit = fitPicture(size, placed.gravity, rect, surface);
  return fit && fills(*fit, surface) ? std::optional(toPixels(fit->source, size)) : std::nullopt;
}

void WaylandPainter::paint() {
  const auto only = onlyPicture();
  std::vector<WaylandCanvas*> sharing;
  bool drawnAnew = false;
  for (auto* canvas : canvases_) {
    if (!canvas->wantsPicture()) {
      continue;
    }
    if (only && fillingPart(*only, uprightSize(only->frame.geometry), *canvas)) {
      sharing.push_back(canvas);
    } else if (frameWaits_) {
      paintOwn(*canvas);
      drawnAnew = true;
    }
  }
  if (!sharing.empty()) {
    paintShared(*only, sharing);
  } else if (drawnAnew) {
    frameWaits_ = false;
    drawn_();
  }
}

void WaylandPainter::paintShared(const PlacedPicture& placed, const std::vector<WaylandCanvas*>& wanting) {
  const bool drawnAnew = frameWaits_ && convert(placed);
  for (auto* canvas : wanting) {
    if (canvas->shown() != newest_.sequence) {
      presentNewest(placed, *canvas);
    }
  }
  if (drawnAnew) {
    drawn_();
  }
}

bool WaylandPainter::convert(const PlacedPicture& placed) {
  const auto room = roomFor(shared_, uprightSize(placed.frame.geometry));
  if (!room) {
    freeHeldPictures(placed);
    return false;
  }
  converter_.convert(placed.frame, room->pictures->pixels(room->index));
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
void WaylandPainter::freeHeldPictures(const PlacedPicture& placed) {
  for (auto* canvas : canvases_) {
    if (!canvas->wantsPicture() && canvas->isConfigured() && !canvas->holds(newest_)) {
      presentNewest(placed, *canvas);
    }
  }
}

bool WaylandPainter::presentNewest(const PlacedPicture& placed, WaylandCanvas& canvas) {
  if (!newest_.pictures) {
    return false;
  }
  const auto part = fillingPart(placed, newest_.pictures->size(), canvas);
  if (part) {
    canvas.present(newest_, *part);
  }
  return part.has_value();
}

void WaylandPainter::paintOwn(WaylandCanvas& canvas) {
  const auto room = roomFor(own_[&canvas], canvas.pixelSize());
  if (room) {
    renderer_.render(view_, room->pictures->pixels(room->index));
    canvas.present(*room, wholeOf(room->pictures->size()));
  }
}

void WaylandPainter::repaint(WaylandCanvas& canvas) {
  if (const auto only = onlyPicture(); only && presentNewest(*only, canvas)) {
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
