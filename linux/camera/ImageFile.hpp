// Picture files: reads PNG, JPEG and WebP, writes PNG.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

struct ImageLoad {
  VideoFramePtr frame;  ///< RGB, upright, with white behind transparent parts; null on failure
  std::string error;    ///< for people: file, cause and remedy; empty on success
};

/// Returns whether the file begins like a PNG, JPEG or WebP picture. The rest of it may still be broken.
bool isImageFile(const std::filesystem::path& path);

/// Reads a picture of at most 16384 pixels along each edge, 100 million in all, and 400 MB. A truncated file
/// is a failure, even where a decoder would show the part that is there. Callable from any thread.
ImageLoad loadImageFile(const std::filesystem::path& path);

/// Writes BGRx pixels, `stride` bytes from a row to the next, as an opaque PNG. The file is replaced as a
/// whole, so nobody sees half of it. Returns an error message for people, empty on success.
std::string writePNG(const std::filesystem::path& path, const std::uint8_t* bgrx, int width, int height,
                     int stride);

}  // namespace nivlo
