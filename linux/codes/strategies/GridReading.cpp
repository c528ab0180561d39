#include "linux/codes/strategies/GridReading.hpp"

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

std::vector<Reading> readGrid(const ModuleGrid& grid, const Modules& modules, const Decoder& decoder) {
  LumaBuffer drawing;
  draw(modules, drawing);
  std::vector<Reading> readings = decoder.read(drawing.picture());
  for (Reading& reading : readings) {
    for (CGPoint& corner : reading.outline) {
      corner = grid.inPicture(placeShown(corner));
    }
  }
  return readings;
}

double costOfGrid(int modules) { return 500.0 * modules * modules; }

}  // namespace nivlo
