// One picture of a camera, shared without copying between everybody who looks at it.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace nivlo {

enum class PixelFormat {
  NV12,  ///< 4:2:0, a luma plane and one of interleaved U and V
  I420,  ///< 4:2:0, three planes: Y, U, V
  YUY2,  ///< 4:2:2 packed: Y0 U Y1 V
  BGRx,  ///< 32 bits a pixel, bytes in memory B, G, R, unused
  RGBx,  ///< 32 bits a pixel, bytes in memory R, G, B, unused
  RGB,   ///< 24 bits a pixel, bytes in memory R, G, B
};

/// Coefficients between YUV and RGB: ITU-R BT.601 or BT.709.
enum class ColorMatrix { BT601, BT709 };

/// Limited: luma 16..235, chroma 16..240. Full: 0..255.
enum class ColorRange { Limited, Full };

struct Plane {
  const std::uint8_t* data = nullptr;
  int stride = 0;  ///< bytes from a row to the next; never negative
};

/// An immutable picture. `storage` keeps the memory behind `planes` alive; when the last reference to the
/// frame goes, the memory returns to whoever lent it, on whatever thread that happens.
struct VideoFrame {
  PixelFormat format = PixelFormat::I420;
  int width = 0;   ///< pixels, as the sensor delivers them
  int height = 0;  ///< pixels
  std::array<Plane, 3> planes;
  ColorMatrix matrix = ColorMatrix::BT601;  ///< meaningless for RGB formats
  ColorRange range = ColorRange::Limited;   ///< meaningless for RGB formats
  /// Counter-clockwise turn, 0, 90, 180 or 270 degrees, that makes the picture upright (the sense of V4L2's
  /// V4L2_CID_CAMERA_SENSOR_ROTATION and of libcamera's Rotation property).
  int rotation = 0;
  std::chrono::steady_clock::time_point captureTime;
  std::shared_ptr<const void> storage;
};

using VideoFramePtr = std::shared_ptr<const VideoFrame>;

}  // namespace nivlo
