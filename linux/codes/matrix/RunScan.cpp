#include "linux/codes/matrix/RunScan.hpp"

#include <algorithm>
#include <vector>

#include "linux/codes/picture/LocalThreshold.hpp"

namespace nivlo {

namespace {

constexpr int kRowsLookedAt = 360;

}  // namespace

void findRuns(const LumaPicture& picture, const Runs& runs,
              const std::function<bool(const RunsMiddle&)>& found) {
  const LocalThreshold threshold(picture);
  const int step = std::max(1, picture.height / kRowsLookedAt);
  std::vector<int> edges;
  std::vector<int> upright;
  for (int y = step / 2; y < picture.height; y += step) {
    threshold.findEdges(y, edges);
    for (std::size_t i = 0; i + runs.count < edges.size(); ++i) {
      if (!runs.areBetween(&edges[i])) {
        continue;
      }
      const CGPoint place{(edges[i + runs.count / 2] + edges[i + runs.count / 2 + 1] - 1) / 2.0,
                          static_cast<double>(y)};
      const int width = edges[i + runs.count] - edges[i];
      if (!threshold.findEdgesAbout(place, width, runs.count + 1, upright) ||
          !runs.areBetween(upright.data())) {
        continue;
      }
      const int limit = threshold.at(static_cast<int>(place.x), y);
      if (!found({place, static_cast<double>(width) / runs.modules, limit})) {
        return;
      }
    }
  }
}

}  // namespace nivlo
