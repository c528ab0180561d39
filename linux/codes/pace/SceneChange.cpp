#include "linux/codes/pace/SceneChange.hpp"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace nivlo {

namespace {

// Of 255. The mean of a cell's some hundred pixels moves by less than 1 with noise; mains light makes 2 of
// it.
constexpr int kNoise = 4;
constexpr int kRowStep = 4;

int meanOf(const LumaPicture& cell) {
  unsigned sum = 0;
  unsigned count = 0;
  for (int y = 0; y < cell.height; y += kRowStep) {
    sum = std::accumulate(cell.row(y), cell.row(y) + cell.width, sum);
    count += cell.width;
  }
  return static_cast<int>(sum / count);
}

}  // namespace

bool SceneChange::differs(const VideoFrame& frame) {
  const auto picture = lumaOf(frame, luma_);
  latest_.reset();
  if (!picture || picture->width < kColumns || picture->height < kRows) return true;
  latest_ = thumbnailOf(*picture);
  if (!remembered_) return true;
  return !std::equal(latest_->begin(), latest_->end(), remembered_->begin(),
                     [](int now, int before) { return std::abs(now - before) <= kNoise; });
}

SceneChange::Thumbnail SceneChange::thumbnailOf(const LumaPicture& picture) {
  const int width = picture.width / kColumns;
  const int height = picture.height / kRows;
  Thumbnail thumbnail{};
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      const auto* corner = picture.row(row * height) + static_cast<std::ptrdiff_t>(column) * width;
      thumbnail[row * kColumns + column] = meanOf({corner, width, height, picture.stride});
    }
  }
  return thumbnail;
}

}  // namespace nivlo
