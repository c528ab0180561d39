#include "linux/codes/matrix/Modules.hpp"

#include <algorithm>
#include <cstdint>

namespace nivlo {

namespace {

// Pixels of a module.
constexpr int kSide = 4;
// Modules; QR codes need the most (ISO/IEC 18004).
constexpr int kQuietZone = 4;
constexpr std::uint8_t kLight = 255;
constexpr std::uint8_t kDark = 0;

}  // namespace

void draw(const Modules& modules, LumaBuffer& drawing) {
  const int side = (modules.across() + 2 * kQuietZone) * kSide;
  drawing.resize(side, side);
  std::fill_n(drawing.row(0), static_cast<std::size_t>(side) * side, kLight);
  for (int y = 0; y < modules.across() * kSide; ++y) {
    std::uint8_t* row = drawing.row(kQuietZone * kSide + y) + static_cast<std::ptrdiff_t>(kQuietZone) * kSide;
    for (int x = 0; x < modules.across(); ++x) {
      if (modules.isDark(x, y / kSide)) {
        std::fill_n(row + static_cast<std::ptrdiff_t>(x) * kSide, kSide, kDark);
      }
    }
  }
}

CGPoint placeShown(CGPoint onDrawing) {
  return {onDrawing.x / kSide - kQuietZone, onDrawing.y / kSide - kQuietZone};
}

}  // namespace nivlo
