// The scene of the back demo camera: a desk by a window at evening.
#pragma once

#include <vector>

#include "linux/camera/demo/CodeCards.hpp"
#include "linux/camera/demo/DemoScene.hpp"

namespace nivlo {

/// In each period of `kCardPeriod` the next of the cards with codes is held up for four seconds. For the rest
/// of the period no code is in view.
class BackScene final : public DemoScene {
 public:
  static constexpr double kCardPeriod = 5;  ///< seconds

  BackScene();
  void draw(cairo_t* cairo, double seconds) const override;

 private:
  void drawSky(cairo_t* cairo, double seconds) const;
  void drawCard(cairo_t* cairo, double seconds) const;

  Layer room_;
  Layer bulbGlow_;
  std::vector<Layer> clouds_;
  std::vector<CodeCard> cards_;
};

}  // namespace nivlo
