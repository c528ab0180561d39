#include "linux/codes/matrix/Modules.hpp"

#include <algorithm>
#include <cstdint>

namespace nivlo {

namespace {

// Pixels.
constexpr int kModuleSize = 4;
// Modules. No symbology read here needs more than QR codes do (ISO/IEC 18004).
constexpr int kQuietModules = 4;
constexpr std::uint8_t kLight = 255;
constexpr std::uint8_t kDark = 0;

}  // namespace

void draw(const Modules& modules, LumaBuffer& drawing) {
  const int size = (modules.across() + 2 * kQuietModules) * kModuleSize;
  drawing.resize(size, size);
  std::fill_n(drawing.row(0), static_cast<std::size_t>(size) * size, kLight);
  for (int y = 0; y < modules.across() * kModuleSize; ++y) {
    std::uint8_t* row = drawing.row(kQuietModules * kModuleSize + y) +
                        static_cast<std::ptrdiff_t>(kQuietModules) * kModuleSize;
    for (int x = 0; x < modules.across(); ++x) {
      if (modules.isDark(x, y / kModuleSize)) {
        std::fill_n(row + static_cast<std::ptrdiff_t>(x) * kModuleSize, kModuleSize, kDark);
      }
    }
  }
}

CGPoint placeShown(CGPoint onDrawing) {
  return {onDrawing.x / kModuleSize - kQuietModules, onDrawing.y / kModuleSize - kQuietModules};
}

}  // namespace nivlo
