#include "linux/codes/pace/SceneChange.hpp"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

// Brightness levels, of 255, by which the mean of a cell may change. Noise changes the mean of hundreds of
// pixels by less than 1, and the flicker of mains light by up to 2.
constexpr int kCellNoise = 4;
// Every fourth row is enough, and takes a quarter of the time to convert.
constexpr int kSampledRowStep = 4;

/// Returns the frame with only the sampled rows. A stride too large for that becomes 0, which lumaOf refuses.
VideoFrame sampledRowsOf(VideoFrame frame) {
  frame.height /= kSampledRowStep;
  frame.planes[0].stride =
      frame.planes[0].stride <= INT_MAX / kSampledRowStep ? frame.planes[0].stride * kSampledRowStep : 0;
  return frame;
}

}  // namespace

bool SceneChange::differs(const VideoFrame& frame) {
  const auto picture = lumaOf(sampledRowsOf(frame), luma_);
  latest_.reset();
  if (!picture || picture->width < kColumns || picture->height < kRows) {
    return true;
  }
  latest_ = thumbnailOf(*picture);
  if (!remembered_) {
    return true;
  }
  return !std::equal(latest_->begin(), latest_->end(), remembered_->begin(),
                     [](int now, int before) { return std::abs(now - before) <= kCellNoise; });
}

SceneChange::Thumbnail SceneChange::thumbnailOf(const LumaPicture& picture) {
  Thumbnail thumbnail{};
  libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, thumbnail.data(),
                     kColumns, kColumns, kRows, libyuv::kFilterBox);
  return thumbnail;
}

}  // namespace nivlo
