#include "linux/codes/pace/SceneChange.hpp"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <numeric>

namespace nivlo {

namespace {

// Of 255. The mean of a cell's some hundred pixels moves by less than 1 with noise; mains light makes 2 of
// it.
constexpr int kNoise = 4;
// Of four rows one tells enough, and is converted in a quarter of the time.
constexpr int kRowStep = 4;

VideoFrame someRowsOf(VideoFrame frame) {
  frame.height /= kRowStep;
  frame.planes[0].stride =
      frame.planes[0].stride <= INT_MAX / kRowStep ? frame.planes[0].stride * kRowStep : 0;
  return frame;
}

int meanOf(const LumaPicture& cell) {
  unsigned sum = 0;
  for (int y = 0; y < cell.height; ++y) sum = std::accumulate(cell.row(y), cell.row(y) + cell.width, sum);
  return static_cast<int>(sum / (cell.width * cell.height));
}

}  // namespace

bool SceneChange::differs(const VideoFrame& frame) {
  const auto picture = lumaOf(someRowsOf(frame), luma_);
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
