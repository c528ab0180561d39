// Tells dark from light at each place of a picture.
#pragma once

#include <algorithm>
#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// The threshold at a place is the mean brightness around it, over about a fifth of the picture's shorter
/// dimension. The picture's pixels must outlive it.
class LocalThreshold {
 public:
  explicit LocalThreshold(const LumaPicture& picture);

  /// Returns the least brightness that counts as light there.
  int at(int x, int y) const {
    return means_.picture().row(std::min(y / tileSize_, rows_ - 1))[std::min(x / tileSize_, columns_ - 1)];
  }

  /// Stores the positions in row `y` at which dark turns light or light turns dark, after 0 and before the
  /// picture's width.
  void findEdges(int y, std::vector<int>& edges) const;

  /// Stores the `count` positions nearest to a place in its column, half above and half below it, at which
  /// brightness crosses the threshold of that place. Returns false if there are fewer within `farthest`
  /// pixels.
  bool findEdgesAbout(CGPoint place, int farthest, int count, std::vector<int>& edges) const;

 private:
  LumaPicture picture_;
  int tileSize_;  ///< pixels
  int columns_;
  int rows_;
  LumaBuffer means_;  ///< one pixel per tile: the mean of the 3 x 3 tiles around it
};

}  // namespace nivlo
