#include "host/surfaces/ScreenRect.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace nivlo {

namespace {

constexpr double kSmallestVisibleShare = 0.05;

/// Returns the length of the line from `begin` to `end` that the rectangles cover. They must be sorted by
/// their left sides.
int coveredLength(const std::vector<ScreenRect>& rects, int y, int begin, int end) {
  int covered = 0;
  for (const auto& rect : rects) {
    if (y < rect.y || y >= rect.y + rect.height) {
      continue;
    }
    const int right = std::min(rect.x + rect.width, end);
    const int left = std::max(rect.x, begin);
    if (left < right) {
      covered += right - left;
      begin = right;
    }
  }
  return covered;
}

}  // namespace

bool coversMost(const ScreenRect& rect, const ScreenRect& area) { return uncoveredShare(area, {rect}) < 0.5; }

/// Between two neighbouring upper or lower edges, all lines are covered alike, so that one stands for them.
double uncoveredShare(const ScreenRect& area, const std::vector<ScreenRect>& rects) {
  const int bottom = area.y + area.height;
  std::vector<int> edges{area.y, bottom};
  for (const auto& rect : rects) {
    edges.push_back(std::clamp(rect.y, area.y, bottom));
    edges.push_back(std::clamp(rect.y + rect.height, area.y, bottom));
  }
  std::sort(edges.begin(), edges.end());
  auto sorted = rects;
  std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
  std::int64_t covered = 0;
  for (std::size_t i = 1; i < edges.size(); ++i) {
    const std::int64_t height = edges[i] - edges[i - 1];
    covered += height * coveredLength(sorted, edges[i - 1], area.x, area.x + area.width);
  }
  return 1 - static_cast<double>(covered) / (static_cast<double>(area.width) * area.height);
}

bool hideNearlyAll(const std::vector<ScreenRect>& rects, const ScreenRect& area) {
  return uncoveredShare(area, rects) < kSmallestVisibleShare;
}

}  // namespace nivlo
