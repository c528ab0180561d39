// A rectangle on a screen.
#pragma once

#include <vector>

namespace nivlo {

/// In the display's own coordinates: pixels on X11, logical pixels on a Wayland compositor.
struct ScreenRect {
  int x = 0;
  int y = 0;
  int width = 1;
  int height = 1;
  bool operator==(const ScreenRect&) const = default;
};

/// Returns whether the rectangle covers more than half of the area. A maximised window does that on its own
/// monitor, however many panels it leaves room for, and on no other.
bool coversMost(const ScreenRect& rect, const ScreenRect& area);

/// The share of the area, from 0 to 1, that none of the rectangles covers. They may overlap each other and
/// reach beyond the area, which must not be empty.
double uncoveredShare(const ScreenRect& area, const std::vector<ScreenRect>& rects);

/// Returns whether the rectangles leave less than 5 % of the area uncovered. What remains visible is then
/// gaps between windows.
bool hideNearlyAll(const std::vector<ScreenRect>& rects, const ScreenRect& area);

}  // namespace nivlo
