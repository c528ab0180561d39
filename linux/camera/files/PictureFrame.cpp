#include "linux/camera/files/PictureFrame.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include <libyuv/convert.h>
#include <libyuv/scale.h>

namespace nivlo {
namespace {

constexpr int kLongestCameraEdge = 3840;  // of a 4K camera's picture

struct I420Picture {
  I420Picture(int w, int h) : width(w), height(h), bytes(lumaSize() + 2 * chromaSize()) {}

  int chromaStride() const { return (width + 1) / 2; }
  std::size_t lumaSize() const { return static_cast<std::size_t>(width) * height; }
  std::size_t chromaSize() const { return static_cast<std::size_t>(chromaStride()) * ((height + 1) / 2); }
  std::uint8_t* y() { return bytes.data(); }
  std::uint8_t* u() { return y() + lumaSize(); }
  std::uint8_t* v() { return u() + chromaSize(); }

  int width;
  int height;
  std::vector<std::uint8_t> bytes;
};

I420Picture convert(const VideoFrame& rgb) {
  I420Picture picture(rgb.width, rgb.height);
  // In libyuv's words, RAW has its bytes in the order R, G, B, and J420 is I420 in full range.
  libyuv::RAWToJ420(rgb.planes[0].data, rgb.planes[0].stride, picture.y(), picture.width, picture.u(),
                    picture.chromaStride(), picture.v(), picture.chromaStride(), picture.width,
                    picture.height);
  return picture;
}

I420Picture shrink(I420Picture large) {
  const double factor = static_cast<double>(kLongestCameraEdge) / std::max(large.width, large.height);
  if (factor >= 1) {
    return large;
  }
  I420Picture small(std::max(1, static_cast<int>(large.width * factor)),
                    std::max(1, static_cast<int>(large.height * factor)));
  libyuv::I420Scale(large.y(), large.width, large.u(), large.chromaStride(), large.v(), large.chromaStride(),
                    large.width, large.height, small.y(), small.width, small.u(), small.chromaStride(),
                    small.v(), small.chromaStride(), small.width, small.height, libyuv::kFilterBox);
  return small;
}

}  // namespace

VideoFramePtr asCameraFrame(const VideoFrame& rgb) {
  auto picture = std::make_shared<I420Picture>(shrink(convert(rgb)));
  auto frame = std::make_shared<VideoFrame>();
  frame->format = PixelFormat::I420;
  frame->width = picture->width;
  frame->height = picture->height;
  frame->planes = {Plane{picture->y(), picture->width}, Plane{picture->u(), picture->chromaStride()},
                   Plane{picture->v(), picture->chromaStride()}};
  frame->matrix = ColorMatrix::BT601;
  frame->range = ColorRange::Full;
  frame->captureTime = rgb.captureTime;
  frame->storage = std::move(picture);
  return frame;
}

}  // namespace nivlo
