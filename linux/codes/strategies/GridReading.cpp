#include "linux/codes/strategies/GridReading.hpp"

#include <iterator>

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

void appendFirst(std::span<const int> sizes, const std::function<std::vector<Reading>(int)>& follow,
                 std::vector<Reading>& readings) {
  for (const int across : sizes) {
    std::vector<Reading> found = follow(across);
    if (!found.empty()) {
      readings.insert(readings.end(), std::make_move_iterator(found.begin()),
                      std::make_move_iterator(found.end()));
      return;
    }
  }
}

double costOfGrids(std::span<const int> sizes) {
  double cost = 0;
  for (const int across : sizes) {
    cost += 500.0 * across * across;
  }
  return cost;
}

}  // namespace nivlo
