#include "host/render/PictureConverter.hpp"

#include <cstddef>
#include <utility>

#include <libyuv.h>

namespace nivlo {

namespace {

const libyuv::YuvConstants* coefficients(const VideoFrame& frame) {
  const bool full = frame.range == ColorRange::Full;
  if (frame.matrix == ColorMatrix::BT709) {
    return full ? &libyuv::kYuvF709Constants : &libyuv::kYuvH709Constants;
  }
  return full ? &libyuv::kYuvJPEGConstants : &libyuv::kYuvI601Constants;
}

/// libyuv converts packed 4:2:2 by BT.601 only, so it goes through planes.
void convertYUY2(const VideoFrame& frame, std::vector<std::uint8_t>& planes, Pixels& out) {
  const int chromaStride = (frame.width + 1) / 2;
  const auto lumaSize = static_cast<std::size_t>(frame.width) * frame.height;
  const auto chromaSize = static_cast<std::size_t>(chromaStride) * frame.height;
  planes.resize(lumaSize + 2 * chromaSize);
  auto* y = planes.data();
  auto* u = y + lumaSize;
  auto* v = u + chromaSize;
  libyuv::YUY2ToI422(frame.planes[0].data, frame.planes[0].stride, y, frame.width, u, chromaStride, v,
                     chromaStride, frame.width, frame.height);
  libyuv::I422ToARGBMatrix(y, frame.width, u, chromaStride, v, chromaStride, out.data.data(), out.stride(),
                           coefficients(frame), frame.width, frame.height);
}

/// libyuv names formats by their value as a little-endian word: its ARGB is B, G, R, A in memory.
void convertColors(const VideoFrame& frame, std::vector<std::uint8_t>& planes, Pixels& out) {
  const auto& [first, second, third] = frame.planes;
  auto* pixels = out.data.data();
  const int stride = out.stride();
  switch (frame.format) {
    case PixelFormat::NV12:
      libyuv::NV12ToARGBMatrix(first.data, first.stride, second.data, second.stride, pixels, stride,
                               coefficients(frame), frame.width, frame.height);
      break;
    case PixelFormat::I420:
      libyuv::I420ToARGBMatrix(first.data, first.stride, second.data, second.stride, third.data, third.stride,
                               pixels, stride, coefficients(frame), frame.width, frame.height);
      break;
    case PixelFormat::YUY2:
      convertYUY2(frame, planes, out);
      break;
    case PixelFormat::BGRx:
      libyuv::ARGBCopy(first.data, first.stride, pixels, stride, frame.width, frame.height);
      break;
    case PixelFormat::RGBx:
      libyuv::ABGRToARGB(first.data, first.stride, pixels, stride, frame.width, frame.height);
      break;
    case PixelFormat::RGB:
      libyuv::RAWToARGB(first.data, first.stride, pixels, stride, frame.width, frame.height);
      break;
  }
}

/// libyuv turns clockwise, frames say how far to turn them the other way.
libyuv::RotationMode rotationMode(int counterClockwise) {
  return static_cast<libyuv::RotationMode>((360 - counterClockwise) % 360);
}

}  // namespace

void Pixels::resize(int newWidth, int newHeight) {
  width = newWidth;
  height = newHeight;
  data.resize(static_cast<std::size_t>(newWidth) * newHeight * 4);
}

const Pixels& PictureConverter::convert(const CaptureFrame& frame) {
  const auto& picture = *frame.picture;
  converted_.resize(picture.width, picture.height);
  convertColors(picture, chroma_, converted_);
  const Pixels* upright = &converted_;
  if (frame.geometry.rotation != 0) {
    const bool onItsSide = frame.geometry.rotation % 180 != 0;
    turned_.resize(onItsSide ? picture.height : picture.width, onItsSide ? picture.width : picture.height);
    libyuv::ARGBRotate(converted_.data.data(), converted_.stride(), turned_.data.data(), turned_.stride(),
                       picture.width, picture.height, rotationMode(frame.geometry.rotation));
    upright = &turned_;
  }
  if (!frame.geometry.mirrored) {
    return *upright;
  }
  mirrored_.resize(upright->width, upright->height);
  libyuv::ARGBMirror(upright->data.data(), upright->stride(), mirrored_.data.data(), mirrored_.stride(),
                     upright->width, upright->height);
  return mirrored_;
}

}  // namespace nivlo
