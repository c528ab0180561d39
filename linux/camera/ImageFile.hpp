// Pictures in files: PNG, JPEG, WebP in, PNG out.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

struct ImageLoad {
  VideoFramePtr frame;  ///< RGB or RGBx, upright, on white where the picture is transparent; null on failure
  std::string error;    ///< for a person: the cause; empty on success
};

/// Whether the file begins like a PNG, JPEG or WebP picture; it may still be broken further on.
bool isImageFile(const std::filesystem::path& path);

/// Reads a picture, wholly: a truncated file is a failure. Callable from any thread.
ImageLoad loadImageFile(const std::filesystem::path& path);

/// Writes BGRx pixels as an opaque PNG; the file appears whole or not at all. Returns an error message, empty
/// on success.
std::string writePNG(const std::filesystem::path& path, const std::uint8_t* bgrx, int width, int height,
                     int stride);

}  // namespace nivlo
