#include "host/render/PictureConverter.hpp"

#include <algorithm>
#include <cstddef>

#include <libyuv.h>

#include "host/render/ColorMatrices.hpp"

namespace nivlo {

namespace {

/// Rows that are converted together before they are rotated or mirrored: few enough for the strip to stay in
/// the processor's cache, and even, because two rows of luma share one of chroma.
constexpr int kStripRows = 16;

/// A strip of the frame as a frame of its own. `first` must be even for the chroma rows to match.
VideoFrame rowsOf(const VideoFrame& frame, int first, int rows) {
  VideoFrame part = frame;
  part.height = rows;
  for (std::size_t i = 0; i < part.planes.size(); ++i) {
    const bool subsampled = i > 0;
    const auto row = static_cast<std::ptrdiff_t>(subsampled ? first / 2 : first);
    if (part.planes[i].data) {
      part.planes[i].data += row * part.planes[i].stride;
    }
  }
  return part;
}

/// libyuv converts packed 4:2:2 with BT.601 coefficients only, so each strip is first split into planes.
void convertYUY2(const VideoFrame& frame, std::vector<std::uint8_t>& planes, PixelSpan out) {
  const int chromaStride = (frame.width + 1) / 2;
  planes.resize(static_cast<std::size_t>(frame.width + 2 * chromaStride) * kStripRows);
  auto* y = planes.data();
  auto* u = y + static_cast<std::ptrdiff_t>(frame.width) * kStripRows;
  auto* v = u + static_cast<std::ptrdiff_t>(chromaStride) * kStripRows;
  const auto& packed = frame.planes[0];
  for (int first = 0; first < frame.height; first += kStripRows) {
    const int rows = std::min(kStripRows, frame.height - first);
    libyuv::YUY2ToI422(packed.data + static_cast<std::ptrdiff_t>(first) * packed.stride, packed.stride, y,
                       frame.width, u, chromaStride, v, chromaStride, frame.width, rows);
    libyuv::I422ToARGBMatrix(y, frame.width, u, chromaStride, v, chromaStride, out.at(0, first), out.stride,
                             colorMatrix(frame.matrix, frame.range), frame.width, rows);
  }
}

/// libyuv names a format after its little-endian word: its ARGB is B, G, R, A in memory.
void convertColors(const VideoFrame& frame, std::vector<std::uint8_t>& planes, PixelSpan out) {
  const auto& [first, second, third] = frame.planes;
  const auto* matrix = colorMatrix(frame.matrix, frame.range);
  switch (frame.format) {
    case PixelFormat::NV12:
      libyuv::NV12ToARGBMatrix(first.data, first.stride, second.data, second.stride, out.data, out.stride,
                               matrix, frame.width, frame.height);
      break;
    case PixelFormat::I420:
      libyuv::I420ToARGBMatrix(first.data, first.stride, second.data, second.stride, third.data, third.stride,
                               out.data, out.stride, matrix, frame.width, frame.height);
      break;
    case PixelFormat::YUY2:
      convertYUY2(frame, planes, out);
      break;
    case PixelFormat::BGRx:
      libyuv::ARGBCopy(first.data, first.stride, out.data, out.stride, frame.width, frame.height);
      break;
    case PixelFormat::RGBx:
      libyuv::ABGRToARGB(first.data, first.stride, out.data, out.stride, frame.width, frame.height);
      break;
    case PixelFormat::RGB:
      libyuv::RAWToARGB(first.data, first.stride, out.data, out.stride, frame.width, frame.height);
      break;
  }
}

/// Returns where a strip of the delivered picture lies in the upright one, before any mirroring.
struct StripPlace {
  int x;
  int y;
  int width;
  int height;
};

StripPlace placeOf(const VideoFrame& picture, int rotation, int first, int rows) {
  switch (rotation) {
    case 90:
      return {first, 0, rows, picture.width};
    case 180:
      return {0, picture.height - first - rows, picture.width, rows};
    case 270:
      return {picture.height - first - rows, 0, rows, picture.width};
    default:
      return {0, first, picture.width, rows};
  }
}

/// libyuv rotates clockwise, whereas a frame states its rotation counter-clockwise.
libyuv::RotationMode rotationMode(int counterClockwise) {
  return static_cast<libyuv::RotationMode>((360 - counterClockwise) % 360);
}

}  // namespace

PictureSize uprightSize(const PictureGeometry& geometry) {
  return geometry.rotation % 180 == 0 ? PictureSize{geometry.width, geometry.height}
                                      : PictureSize{geometry.height, geometry.width};
}

void PictureConverter::convert(const CaptureFrame& frame, PixelSpan target) {
  const auto& picture = *frame.picture;
  const int rotation = frame.geometry.rotation;
  if (rotation == 0 && !frame.geometry.mirrored) {
    convertColors(picture, chroma_, target);
    return;
  }
  for (int first = 0; first < picture.height; first += kStripRows) {
    const int rows = std::min(kStripRows, picture.height - first);
    strip_.resize(picture.width, rows);
    convertColors(rowsOf(picture, first, rows), chroma_, strip_.span());
    const auto place = placeOf(picture, rotation, first, rows);
    const int x = frame.geometry.mirrored ? target.width - place.x - place.width : place.x;
    auto* to = target.at(x, place.y);
    if (rotation == 0) {
      libyuv::ARGBMirror(strip_.data.data(), strip_.stride(), to, target.stride, place.width, place.height);
    } else if (!frame.geometry.mirrored) {
      libyuv::ARGBRotate(strip_.data.data(), strip_.stride(), to, target.stride, picture.width, rows,
                         rotationMode(rotation));
    } else {
      rotatedStrip_.resize(place.width, place.height);
      libyuv::ARGBRotate(strip_.data.data(), strip_.stride(), rotatedStrip_.data.data(),
                         rotatedStrip_.stride(), picture.width, rows, rotationMode(rotation));
      libyuv::ARGBMirror(rotatedStrip_.data.data(), rotatedStrip_.stride(), to, target.stride, place.width,
                         place.height);
    }
  }
}

}  // namespace nivlo
