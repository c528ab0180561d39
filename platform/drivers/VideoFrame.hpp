// One picture of a camera, shared without copying by all who use it.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace nivlo {

/// The layout of a picture's pixels in memory.
enum class PixelFormat {
  NV12,  ///< YUV 4:2:0 in two planes: luma, and U and V interleaved
  I420,  ///< YUV 4:2:0 in three planes: Y, U, V
  YUY2,  ///< YUV 4:2:2 in one plane: Y0 U Y1 V
  BGRx,  ///< 32 bits a pixel, bytes in memory B, G, R, unused
  RGBx,  ///< 32 bits a pixel, bytes in memory R, G, B, unused
  RGB,   ///< 24 bits a pixel, bytes in memory R, G, B
};

/// The coefficients for converting YUV to RGB: those of ITU-R BT.601 or of BT.709.
enum class ColorMatrix { BT601, BT709 };

/// The values that YUV samples take. Limited: luma 16 to 235, chroma 16 to 240. Full: 0 to 255.
enum class ColorRange { Limited, Full };

/// One plane of a picture, row by row from the top.
struct Plane {
  const std::uint8_t* data = nullptr;
  int stride = 0;  ///< bytes from the start of a row to the start of the next; 0 if all rows are one
};

/// A picture. It does not change once it is shared. When the last reference to it is dropped, on whatever
/// thread that is, `storage` gives the memory back to the camera.
struct VideoFrame {
  PixelFormat format = PixelFormat::I420;
  int width = 0;                            ///< pixels, before the picture is turned upright
  int height = 0;                           ///< pixels, before the picture is turned upright
  std::array<Plane, 3> planes;              ///< as many as the format has; the others are empty
  ColorMatrix matrix = ColorMatrix::BT601;  ///< meaningless for RGB formats
  ColorRange range = ColorRange::Limited;   ///< meaningless for RGB formats
  /// Degrees by which the picture must be turned counter-clockwise to be upright: 0, 90, 180 or 270. This is
  /// the sense of V4L2_CID_CAMERA_SENSOR_ROTATION and of libcamera's Rotation property.
  int rotation = 0;
  std::chrono::steady_clock::time_point captureTime;  ///< when the picture was taken
  std::shared_ptr<const void> storage;                ///< owns the memory behind `planes`
};

/// The way in which a picture is to be shown when it is upright.
struct PictureTurn {
  int clockwise = 0;      ///< degrees by which what is seen is turned: 0, 90, 180 or 270
  bool mirrored = false;  ///< exchange left and right, as a mirror does

  bool operator==(const PictureTurn&) const = default;
};

/// A shared picture.
using VideoFramePtr = std::shared_ptr<const VideoFrame>;

}  // namespace nivlo
