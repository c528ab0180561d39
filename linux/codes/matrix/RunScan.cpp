#include "linux/codes/matrix/RunScan.hpp"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "linux/codes/picture/LocalThreshold.hpp"

namespace nivlo {

namespace {

constexpr int kRowsScanned = 360;

}  // namespace

void findRuns(const LumaPicture& picture, const RunPattern& pattern,
              const std::function<bool(const PatternCentre&)>& found) {
  const LocalThreshold threshold(picture);
  const int step = std::max(1, picture.height / kRowsScanned);
  std::vector<int> edges;
  std::vector<int> columnEdges;
  for (int y = step / 2; y < picture.height; y += step) {
    threshold.findEdges(y, edges);
    for (std::size_t i = 0; i + pattern.count < edges.size(); ++i) {
      if (!pattern.matches(&edges[i])) {
        continue;
      }
      const CGPoint place{(edges[i + pattern.count / 2] + edges[i + pattern.count / 2 + 1] - 1) / 2.0,
                          static_cast<double>(y)};
      const int width = edges[i + pattern.count] - edges[i];
      if (!threshold.findEdgesAbout(place, width, pattern.count + 1, columnEdges) ||
          !pattern.matches(columnEdges.data())) {
        continue;
      }
      if (!found({place, static_cast<double>(width) / pattern.modules,
                  threshold.at(static_cast<int>(place.x), y)})) {
        return;
      }
    }
  }
}

}  // namespace nivlo
