// A rectangle on an X11 screen.
#pragma once

#include <algorithm>
#include <cstdint>

namespace nivlo {

/// In pixels from the screen's top left corner.
struct X11Rect {
  int x = 0;
  int y = 0;
  int width = 1;
  int height = 1;
  bool operator==(const X11Rect&) const = default;
};

/// Whether the rectangle covers more than half of the area. A maximised window does that on its own monitor,
/// however many panels it leaves room for, and on no other.
inline bool coversMost(const X11Rect& rect, const X11Rect& area) {
  const std::int64_t width = std::min(rect.x + rect.width, area.x + area.width) - std::max(rect.x, area.x);
  const std::int64_t height = std::min(rect.y + rect.height, area.y + area.height) - std::max(rect.y, area.y);
  return width > 0 && height > 0 && 2 * width * height > std::int64_t{area.width} * area.height;
}

}  // namespace nivlo
