#include "host/surfaces/wayland/WaylandPainter.hpp"

#include <cmath>
#include <utility>

#include "host/render/PictureFit.hpp"

namespace nivlo {

namespace {

bool fills(const PictureFit& fit, CGSize surface) {
  constexpr double kTolerance = 0.5;  // pixels
  return std::abs(fit.destination.origin.x) < kTolerance && std::abs(fit.destination.origin.y) < kTolerance &&
         std::abs(fit.destination.size.width - surface.width) < kTolerance &&
         std::abs(fit.destination.size.height - surface.height) < kTolerance;
}

PixelRect wholeOf(PictureSize size) { return {0, 0, size.width, size.height}; }

}  // namespace

WaylandPainter::WaylandPainter(const WaylandGlobals& globals, std::function<void()> drawn)
    : globals_(globals), drawn_(std::move(drawn)) {}

WaylandPainter::~WaylandPainter() = default;

void WaylandPainter::show(LaidOutView view) {
  view_ = std::move(view);
  clock_.emplace(view_, [this] {
    pictureWaits_ = true;
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
    } else if (pictureWaits_) {
      paintOwn(*canvas);
      drawnAnew = true;
    }
  }
  if (!sharing.empty()) {
    paintShared(*only, sharing);
  } else if (drawnAnew) {
    pictureWaits_ = false;
    drawn_();
  }
}

void WaylandPainter::paintShared(const PlacedPicture& placed, const std::vector<WaylandCanvas*>& wanting) {
  const bool drawnAnew = pictureWaits_ && convert(placed);
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
  pictureWaits_ = false;
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

/// The compositor may keep the picture of a hidden canvas for ever, because it asks for no other. Presenting
/// the newest there lets the old one go.
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
    // The pictures of the canvas's own size, up to three of a whole screen, are not needed again for as long
    // as it can share.
    own_.erase(&canvas);
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

/// New pictures are black, and one pixel is enough where the compositor scales it up.
void WaylandPainter::paintBlack(WaylandCanvas& canvas) {
  const auto room = roomFor(own_[&canvas], canvas.canScale() ? PictureSize{1, 1} : canvas.pixelSize());
  if (room) {
    canvas.present(*room, wholeOf(room->pictures->size()));
  }
}

}  // namespace nivlo
