// Puts a view's pictures on canvases.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "host/render/LayerRenderer.hpp"
#include "host/surfaces/FrameClock.hpp"
#include "host/surfaces/wayland/WaylandCanvas.hpp"

namespace nivlo {

/// A picture that fills the view is converted once, at the camera's size, and shared by all canvases, each of
/// which cuts out its part and has the compositor scale it. Anything else is drawn for each canvas at its own
/// size. Main thread only.
class WaylandPainter {
 public:
  /// `drawn` is called once for each picture that any canvas shows.
  WaylandPainter(const WaylandGlobals& globals, std::function<void()> drawn);
  ~WaylandPainter();
  WaylandPainter(const WaylandPainter&) = delete;
  WaylandPainter& operator=(const WaylandPainter&) = delete;

  void show(LaidOutView view);

  /// The canvas must be removed before it goes.
  void add(WaylandCanvas* canvas) { canvases_.push_back(canvas); }
  void remove(WaylandCanvas* canvas);

  /// Gives the canvases that want one the newest picture.
  void paint();
  /// Gives this canvas what there is, black before the first picture, as its size has changed.
  void repaint(WaylandCanvas& canvas);

 private:
  /// The view's picture in the view's own coordinates, if it has exactly one.
  std::optional<PlacedPicture> onlyPicture() const;
  /// The part of a picture of this size that the compositor can scale to fill the whole canvas, if the
  /// picture covers it.
  std::optional<PixelRect> fillingPart(const PlacedPicture& placed, PictureSize size,
                                       const WaylandCanvas& canvas) const;
  void paintShared(const PlacedPicture& placed, const std::vector<WaylandCanvas*>& wanting);
  bool convert(const PlacedPicture& placed);
  bool presentNewest(const PlacedPicture& placed, WaylandCanvas& canvas);
  void freeHeldPictures(const PlacedPicture& placed);
  void paintOwn(WaylandCanvas& canvas);
  void paintBlack(WaylandCanvas& canvas);
  std::optional<ShownPicture> roomFor(std::shared_ptr<ShmPictures>& pictures, PictureSize size);

  const WaylandGlobals& globals_;
  std::function<void()> drawn_;
  LaidOutView view_;
  std::vector<WaylandCanvas*> canvases_;
  std::optional<FrameClock> clock_;
  PictureConverter converter_;
  LayerRenderer renderer_;
  bool frameWaits_ = false;
  unsigned sequence_ = 0;
  ShownPicture newest_;
  std::shared_ptr<ShmPictures> shared_;
  std::map<const WaylandCanvas*, std::shared_ptr<ShmPictures>> own_;
};

}  // namespace nivlo
