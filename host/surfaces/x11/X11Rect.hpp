// A rectangle on an X11 screen.
#pragma once

#include <vector>

namespace nivlo {

/// In pixels from the screen's top left corner.
struct X11Rect {
  int x = 0;
  int y = 0;
  int width = 1;
  int height = 1;
  bool operator==(const X11Rect&) const = default;
};

/// Returns whether the rectangle covers more than half of the area. A maximised window does that on its own
/// monitor, however many panels it leaves room for, and on no other.
bool coversMost(const X11Rect& rect, const X11Rect& area);

/// The share of the area, from 0 to 1, that none of the rectangles covers. They may overlap each other and
/// reach beyond the area.
double uncoveredShare(const X11Rect& area, const std::vector<X11Rect>& rects);

}  // namespace nivlo
