#include "linux/codes/pace/SceneChange.hpp"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

// Of 255. The mean of a cell's some hundred pixels moves by less than 1 with noise; mains light makes 2 of
// it.
constexpr int kNoise = 4;
// Of four rows one tells enough, and is converted in a quarter of the time.
constexpr int kSampledRowStep = 4;

VideoFrame someRowsOf(VideoFrame frame) {
  frame.height /= kSampledRowStep;
  frame.planes[0].stride =
      frame.planes[0].stride <= INT_MAX / kSampledRowStep ? frame.planes[0].stride * kSampledRowStep : 0;
  return frame;
}

}  // namespace

bool SceneChange::differs(const VideoFrame& frame) {
  const auto picture = lumaOf(someRowsOf(frame), luma_);
  latest_.reset();
  if (!picture || picture->width < kColumns || picture->height < kRows) {
    return true;
  }
  latest_ = thumbnailOf(*picture);
  if (!remembered_) {
    return true;
  }
  return !std::equal(latest_->begin(), latest_->end(), remembered_->begin(),
                     [](int now, int before) { return std::abs(now - before) <= kNoise; });
}

SceneChange::Thumbnail SceneChange::thumbnailOf(const LumaPicture& picture) {
  Thumbnail thumbnail{};
  libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, thumbnail.data(),
                     kColumns, kColumns, kRows, libyuv::kFilterBox);
  return thumbnail;
}

}  // namespace nivlo
