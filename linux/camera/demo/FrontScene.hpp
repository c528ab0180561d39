// The scene of the front demo camera: somebody by a lake on a bright day.
#pragma once

#include <vector>

#include "linux/camera/demo/Canvas.hpp"
#include "linux/camera/demo/DemoScene.hpp"

namespace nivlo {

/// Somebody looks into the camera, blinks, and waves now and then. There are no codes.
class FrontScene final : public DemoScene {
 public:
  FrontScene();
  void draw(cairo_t* cairo, double seconds) const override;

 private:
  void drawAir(cairo_t* cairo, double seconds) const;
  void drawPerson(cairo_t* cairo, double seconds) const;

  Layer landscape_;
  Layer body_;
  Layer hair_;
  Layer head_;
  std::vector<Layer> clouds_;
  std::vector<Layer> balloons_;
};

}  // namespace nivlo
