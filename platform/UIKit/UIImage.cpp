#include "platform/UIKit/UIImage.hpp"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>

namespace nivlo {

namespace {

using namespace std::string_view_literals;

/// A PNG starts with this signature and the length and type of its first chunk (W3C PNG, sections 5.2 and
/// 11.2.1). The width and the height follow.
constexpr auto kBeginning = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR"sv;

std::uint32_t bigEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (const char byte : bytes) {
    value = value << 8 | static_cast<unsigned char>(byte);
  }
  return value;
}

std::optional<CGSize> sizeOfPNG(std::string_view data) {
  constexpr std::size_t dimension = 4;  // bytes
  if (!data.starts_with(kBeginning) || data.size() < kBeginning.size() + 2 * dimension) {
    return std::nullopt;
  }
  const auto width = bigEndian(data.substr(kBeginning.size(), dimension));
  const auto height = bigEndian(data.substr(kBeginning.size() + dimension, dimension));
  if (width == 0 || height == 0) {
    return std::nullopt;
  }
  return CGSize{static_cast<double>(width), static_cast<double>(height)};
}

}  // namespace

std::shared_ptr<UIImage> UIImage::imageWithContentsOfFile(const std::filesystem::path& path) {
  // Opening a pipe would block until somebody writes to it.
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) {
    return nullptr;
  }
  std::ifstream stream(path, std::ios::binary);
  std::string data(std::istreambuf_iterator<char>(stream), {});
  const auto size = sizeOfPNG(data);
  return size ? std::shared_ptr<UIImage>(new UIImage(std::move(data), *size)) : nullptr;
}

}  // namespace nivlo
