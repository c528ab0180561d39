// One row across bars, as grey levels.
#pragma once

#include <cstdint>
#include <vector>

namespace nivlo {

/// Places are in pixels from the row's left edge; before and behind it the row's outermost pixel goes on.
class BarProfile {
 public:
  /// Copies the row, which must have at least two pixels.
  BarProfile(const std::uint8_t* row, int width);

  int width() const { return static_cast<int>(grey_.size()); }
  /// 0 for black to 255, interpolated.
  float grey(float place) const;
  /// Above 0 where it is darker than around there, about 1 for a bar however weak or bright the light is;
  /// interpolated.
  float darkness(float place) const;
  /// The same of the nearest pixel, which is found faster.
  float darknessNear(float place) const;
  /// The same for all pixels.
  const std::vector<float>& darknesses() const { return darkness_; }

 private:
  std::vector<float> grey_;
  std::vector<float> darkness_;
};

}  // namespace nivlo
