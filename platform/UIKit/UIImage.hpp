// A picture, as it lies in its file.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// Immutable. Nothing here decodes pixels: whoever shows the picture does.
class UIImage {
 public:
  /// Reads a PNG. Null where the path is no readable file, or the file does not begin as a PNG does.
  static std::shared_ptr<UIImage> imageWithContentsOfFile(const std::filesystem::path& path);

  /// In pixels, as the file's header says; never empty.
  CGSize size() const { return size_; }
  /// All bytes of the file.
  const std::string& data() const { return data_; }

 private:
  UIImage(std::string data, CGSize size) : data_(std::move(data)), size_(size) {}

  std::string data_;
  CGSize size_;
};

}  // namespace nivlo
