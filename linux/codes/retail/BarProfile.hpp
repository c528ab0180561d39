// The grey levels of one row of pixels across bars.
#pragma once

#include <cstdint>
#include <vector>

namespace nivlo {

/// Places are in pixels from the row's left edge, so the first pixel's centre is at 0.5. Beyond either end of
/// the row its outermost pixel counts. Immutable.
class BarProfile {
 public:
  /// Copies the row; `width` is in pixels and must be at least 2.
  BarProfile(const std::uint8_t* row, int width);

  int width() const { return static_cast<int>(grey_.size()); }
  /// Returns the interpolated grey level, from 0 for black to 255.
  float grey(float place) const;
  /// Returns how much darker the place is than its neighbourhood, in units of the contrast there: positive in
  /// bars, about 1 whatever the light, and negative in spaces. Interpolated.
  float darkness(float place) const;
  /// The same for the pixel at the place, without interpolation, which is faster.
  float darknessNear(float place) const;
  /// The same for every pixel of the row, at its centre.
  const std::vector<float>& darknesses() const { return darkness_; }

 private:
  std::vector<float> grey_;
  std::vector<float> darkness_;
};

}  // namespace nivlo
