#include "linux/codes/decoders/CompactPDF417.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace nivlo {

namespace {

// The start pattern's first bar, the widest bar of a row.
constexpr double kFirstBarModules = 8;
// No space inside a row is wider than 6 modules, so a wider light stretch is the quiet zone.
constexpr double kQuietZoneModules = 7;

/// Samples the luma pixel by pixel from `start` to the edge of the picture.
std::vector<int> lumaAlong(const LumaPicture& picture, CGPoint start, CGPoint direction) {
  std::vector<int> luma;
  for (double distance = 0;; ++distance) {
    const int x = static_cast<int>(std::lround(start.x + direction.x * distance));
    const int y = static_cast<int>(std::lround(start.y + direction.y * distance));
    if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) {
      return luma;
    }
    luma.push_back(picture.row(y)[x]);
  }
}

/// Returns the length in pixels of the row of bars with which `luma` begins.
double lengthOfRow(const std::vector<int>& luma, double leftEdge) {
  if (luma.empty()) {
    return 0;
  }
  // The threshold comes from the first bars and spaces only, as anything may lie beyond the code.
  const auto near = luma.begin() +
                    static_cast<std::ptrdiff_t>(std::min<double>(leftEdge, static_cast<double>(luma.size())));
  const auto [dark, light] = std::minmax_element(luma.begin(), std::max(near, luma.begin() + 1));
  const int threshold = (*dark + *light) / 2;
  std::size_t firstBar = 0;
  std::size_t lastDark = 0;
  bool inFirstBar = true;
  for (std::size_t i = 0; i < luma.size(); ++i) {
    const bool isDark = luma[i] <= threshold;
    if (isDark) {
      lastDark = i;
    }
    if (inFirstBar && isDark) {
      firstBar = i + 1;
    }
    inFirstBar = inFirstBar && (isDark || firstBar == 0);
    const double quiet = kQuietZoneModules * static_cast<double>(firstBar) / kFirstBarModules;
    if (firstBar > 0 && static_cast<double>(i - lastDark) > quiet + 1) {
      break;
    }
  }
  return static_cast<double>(lastDark) + 1;
}

}  // namespace

Quad compactPDF417Outline(const LumaPicture& picture, CGPoint topLeft, CGPoint bottomLeft) {
  const CGPoint down{bottomLeft.x - topLeft.x, bottomLeft.y - topLeft.y};
  const double height = std::hypot(down.x, down.y);
  if (height == 0) {
    return {topLeft, topLeft, bottomLeft, bottomLeft};
  }
  const CGPoint right{down.y / height, -down.x / height};
  double length = 0;
  for (const double part : {0.3, 0.5, 0.7}) {
    const CGPoint start{topLeft.x + part * down.x, topLeft.y + part * down.y};
    length = std::max(length, lengthOfRow(lumaAlong(picture, start, right), height));
  }
  const auto end = [&](CGPoint from) {
    return CGPoint{from.x + right.x * length, from.y + right.y * length};
  };
  return {topLeft, end(topLeft), end(bottomLeft), bottomLeft};
}

}  // namespace nivlo
