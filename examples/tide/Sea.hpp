// A sea that is drawn, at any hour of the day.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <platform/CoreGraphics/CGGeometry.hpp>
#include <platform/drivers/VideoFrame.hpp>

namespace tide {

/// The time and the light of one picture of the sea.
struct Moment {
  double hour = 12;    ///< of the day, 0 to 24; other values wrap around
  double seconds = 0;  ///< since the waves began to move
  bool isDim = false;  ///< for a dark desktop: the same sea with less light
};

/// Draws sky, sun or moon, and waves. The sky is drawn again only when the light has changed, so a picture
/// costs little more than its waves. Used by one thread at a time.
class Sea {
 public:
  /// Pictures have the aspect ratio of `size`, and at most kMostPixels pixels: a compositor enlarges soft
  /// shapes without a visible loss, and small pictures save power.
  explicit Sea(nivlo::CGSize size);

  static constexpr double kMostPixels = 512 * 288;

  nivlo::VideoFramePtr draw(const Moment& moment);

 private:
  struct Light;
  static Light lightAt(double hour, bool isDim);

  void drawSky(const Light& light);
  /// Returns, for each column, how many rows below the horizon the crest of a wave lies.
  std::vector<float> crestOf(int wave, double seconds) const;
  void drawWaves(const Light& light, double seconds, std::vector<std::uint32_t>& pixels) const;

  int width_;
  int height_;
  int horizon_;  ///< the first row of water
  std::vector<std::uint32_t> sky_;
  double skyHour_ = -1;
  bool skyIsDim_ = false;
};

}  // namespace tide
