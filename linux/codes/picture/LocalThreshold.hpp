// What is dark and what is light at a place of a picture.
#pragma once

#include <algorithm>
#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo {

/// Takes the mean brightness around a place for the limit there, about an eighth of the picture's shorter
/// side far. The picture's pixels must outlive it.
class LocalThreshold {
 public:
  explicit LocalThreshold(const LumaPicture& picture);

  /// The least brightness that is light there.
  int at(int x, int y) const {
    return means_.picture().row(std::min(y / side_, rows_ - 1))[std::min(x / side_, columns_ - 1)];
  }

  /// The places in a row at which dark and light begin in turns, the picture's sides included.
  void findEdges(int y, std::vector<int>& edges) const;

  /// Those nearest to a place in its column, half of the `count` above and half below it, by the limit at the
  /// place. Returns false where there are fewer within `farthest` pixels.
  bool findEdgesAbout(CGPoint place, int farthest, int count, std::vector<int>& edges) const;

 private:
  LumaPicture picture_;
  int side_;
  int columns_;
  int rows_;
  LumaBuffer means_;
};

}  // namespace nivlo
