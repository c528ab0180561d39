// Paints a view on canvases.
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

/// A view that consists of one picture, filling the canvas, costs the least: the picture is converted once,
/// at its own size, and shared by all canvases, each of which cuts out its part and lets the compositor scale
/// it. Any other view is drawn for each canvas at the canvas's size. Main thread only.
class WaylandPainter {
 public:
  /// `drawn` is called once for each new picture, however many canvases show it. `globals` must outlive the
  /// painter.
  WaylandPainter(const WaylandGlobals& globals, std::function<void()> drawn);
  ~WaylandPainter();
  WaylandPainter(const WaylandPainter&) = delete;
  WaylandPainter& operator=(const WaylandPainter&) = delete;

  /// Paints this view from now on, whenever it gets a new picture and a canvas wants one.
  void show(LaidOutView view);

  /// The canvas must be removed before it is destroyed.
  void add(WaylandCanvas* canvas) { canvases_.push_back(canvas); }
  void remove(WaylandCanvas* canvas);

  /// Gives the newest picture to every canvas that wants one and does not show it yet.
  void paint();
  /// Paints the canvas at once, whether it wants a picture or not, because its size has changed. It is black
  /// until a view is shown.
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
  bool pictureWaits_ = false;            ///< the view has a picture that no canvas has been given yet
  unsigned sequence_ = 0;                ///< of the picture drawn last
  ShownPicture newest_;                  ///< converted last, in `shared_`
  std::shared_ptr<ShmPictures> shared_;  ///< for pictures that all canvases share
  std::map<const WaylandCanvas*, std::shared_ptr<ShmPictures>> own_;  ///< for those of one canvas
};

}  // namespace nivlo
