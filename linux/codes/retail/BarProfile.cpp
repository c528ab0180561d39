#include "linux/codes/retail/BarProfile.hpp"

#include <algorithm>
#include <cmath>

namespace nivlo {

namespace {

// The neighbourhood reaches this fraction of the row's width to either side, which is more than a digit of a
// code that fills the row.
constexpr double kNeighbourhood = 0.1;
// Contrast below either of these is noise and is not amplified to a bar: in grey levels, and as a fraction of
// the row's highest contrast.
constexpr float kMinContrast = 2;
constexpr float kMinRelativeContrast = 0.2F;

/// Returns for each value the mean of those up to `reach` places to either side.
std::vector<float> meansAround(const std::vector<float>& values, int reach) {
  const int width = static_cast<int>(values.size());
  std::vector<float> means(values.size());
  double sum = 0;
  int from = 0;
  int to = 0;
  for (int x = 0; x < width; ++x) {
    while (to < std::min(width, x + reach + 1)) {
      sum += values[to++];
    }
    while (from < x - reach) {
      sum -= values[from++];
    }
    means[x] = static_cast<float>(sum / (to - from));
  }
  return means;
}

/// Interpolates between the values, which belong to the centres of pixels.
float interpolated(const std::vector<float>& values, float place) {
  const float x = std::clamp(place - 0.5F, 0.0F, static_cast<float>(values.size()) - 1.001F);
  const auto left = static_cast<std::size_t>(x);
  return values[left] + (x - static_cast<float>(left)) * (values[left + 1] - values[left]);
}

}  // namespace

BarProfile::BarProfile(const std::uint8_t* row, int width) : grey_(row, row + width), darkness_(grey_) {
  const int reach = std::max(4, static_cast<int>(width * kNeighbourhood));
  std::vector<float> around = meansAround(grey_, reach);
  for (int x = 0; x < width; ++x) {
    darkness_[x] = around[x] - grey_[x];
    around[x] = std::abs(darkness_[x]);
  }
  const std::vector<float> contrast = meansAround(around, reach);
  const float minContrast =
      std::max(kMinContrast, kMinRelativeContrast * *std::max_element(contrast.begin(), contrast.end()));
  for (int x = 0; x < width; ++x) {
    darkness_[x] /= std::max(minContrast, contrast[x]);
  }
}

float BarProfile::grey(float place) const { return interpolated(grey_, place); }

float BarProfile::darkness(float place) const { return interpolated(darkness_, place); }

float BarProfile::darknessNear(float place) const {
  return darkness_[static_cast<std::size_t>(std::clamp(place, 0.0F, static_cast<float>(width() - 1)))];
}

}  // namespace nivlo
