// A picture in the form in which its file holds it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// Immutable, and so safe to use on any thread. It holds no pixels: whoever shows the picture decodes it.
class UIImage {
 public:
  /// Reads a PNG. Returns null if the path is not a readable file, or if the file does not start with a PNG
  /// header. The rest of the file is not checked.
  static std::shared_ptr<UIImage> imageWithContentsOfFile(const std::filesystem::path& path);

  /// The size in pixels, from the file's header; neither edge is 0.
  CGSize size() const { return size_; }
  /// The file's bytes, as they were read.
  const std::string& data() const { return data_; }

 private:
  UIImage(std::string data, CGSize size) : data_(std::move(data)), size_(size) {}

  std::string data_;
  CGSize size_;
};

}  // namespace nivlo
