#include "linux/codes/picture/LocalThreshold.hpp"

#include <algorithm>
#include <cstdint>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

constexpr int kTilesAcross = 16;

std::uint8_t meanAround(const LumaPicture& tiles, int column, int row) {
  int sum = 0;
  int count = 0;
  for (int y = std::max(0, row - 1); y <= std::min(tiles.height - 1, row + 1); ++y) {
    for (int x = std::max(0, column - 1); x <= std::min(tiles.width - 1, column + 1); ++x, ++count) {
      sum += tiles.row(y)[x];
    }
  }
  return static_cast<std::uint8_t>(sum / count);
}

}  // namespace

LocalThreshold::LocalThreshold(const LumaPicture& picture)
    : picture_(picture),
      tileSize_(std::max(4, std::min(picture.width, picture.height) / kTilesAcross)),
      columns_(std::max(1, picture.width / tileSize_)),
      rows_(std::max(1, picture.height / tileSize_)) {
  LumaBuffer tiles;
  tiles.resize(columns_, rows_);
  libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, tiles.row(0), columns_,
                     columns_, rows_, libyuv::kFilterBox);
  means_.resize(columns_, rows_);
  for (int y = 0; y < rows_; ++y) {
    for (int x = 0; x < columns_; ++x) {
      means_.row(y)[x] = meanAround(tiles.picture(), x, y);
    }
  }
}

void LocalThreshold::findEdges(int y, std::vector<int>& edges) const {
  edges.assign(1, 0);
  const std::uint8_t* row = picture_.row(y);
  bool wasDark = row[0] < at(0, y);
  for (int left = 0; left < picture_.width; left += tileSize_) {
    const int threshold = at(left, y);
    const int right = std::min(picture_.width, left + tileSize_);
    for (int x = left; x < right; ++x) {
      const bool isDark = row[x] < threshold;
      if (isDark != wasDark) {
        edges.push_back(x);
      }
      wasDark = isDark;
    }
  }
  edges.push_back(picture_.width);
}

bool LocalThreshold::findEdgesAbout(CGPoint place, int farthest, int count, std::vector<int>& edges) const {
  const int x = static_cast<int>(place.x);
  const int middle = static_cast<int>(place.y);
  const int threshold = at(x, middle);
  const int half = count / 2;
  edges.resize(count);
  for (const int direction : {-1, 1}) {
    const int end = std::clamp(middle + direction * farthest, 0, picture_.height - 1);
    bool wasDark = picture_.row(middle)[x] < threshold;
    int found = 0;
    for (int y = middle; y != end && found < half; y += direction) {
      const bool isDark = picture_.row(y)[x] < threshold;
      if (isDark != wasDark) {
        edges[direction < 0 ? half - 1 - found : half + found] = direction < 0 ? y + 1 : y;
        ++found;
      }
      wasDark = isDark;
    }
    if (found < half) {
      return false;
    }
  }
  return true;
}

}  // namespace nivlo
