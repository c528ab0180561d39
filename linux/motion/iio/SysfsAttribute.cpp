#include "linux/motion/iio/SysfsAttribute.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>

#include <fcntl.h>
#include <unistd.h>

#include "linux/handles/Descriptor.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kLongestAttribute = 256;  // Bytes; enough for a mount matrix. All others are numbers.

}  // namespace

AttributeText readAttribute(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.get() < 0) {
    return {{}, errno};
  }
  std::array<char, kLongestAttribute> buffer;
  const auto length = read(file.get(), buffer.data(), buffer.size());
  if (length < 0) {
    return {{}, errno};
  }
  return {std::string(buffer.data(), static_cast<std::size_t>(length)), 0};
}

std::optional<double> parseNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  if (text.starts_with('+')) {
    text.remove_prefix(1);
  }
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || !std::isfinite(number)) {
    return std::nullopt;
  }
  return number;
}

}  // namespace nivlo
