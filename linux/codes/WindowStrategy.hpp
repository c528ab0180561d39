// Reads a window in the middle of the picture, larger or smaller than it is.
#pragma once

#include "linux/codes/ReadingStrategy.hpp"
#include "linux/codes/ZXingDecoder.hpp"

namespace nivlo {

struct Window {
  double part = 1;   ///< of the picture's width and height, 0..1
  double scale = 1;  ///< how much larger it is read; made less where the result would be too large
  /// How much of what blurring would take away is added, after scaling: 0 leaves the picture as it is.
  double sharpening = 0;
};

class WindowStrategy : public ReadingStrategy {
 public:
  /// Reads at most as many pixels as 1920x1080 has, and enlarges to at most as many as 1280x720 has.
  WindowStrategy(Window window, Symbologies symbologies, Effort effort);

  std::vector<Reading> read(const LumaPicture& picture) override;

 private:
  LumaPicture prepared(const LumaPicture& part, double scale);

  Window window_;
  Symbologies symbologies_;
  Effort effort_;
  LumaBuffer scaled_;
  LumaBuffer sharpened_;
};

}  // namespace nivlo
