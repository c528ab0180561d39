// Attributes of devices in sysfs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nivlo {

struct AttributeText {
  std::string text;
  int error = 0;  ///< errno of what failed; 0 when `text` is valid
};

/// Reads an attribute, which may take seconds: the kernel asks the hardware. The file is opened for each
/// read, because only a new file handle tells of a device that is gone and another in its place.
AttributeText readAttribute(const std::string& path);

/// The finite decimal number at the start of a text, in the notation of sysfs whatever the locale; none where
/// there is no such number.
std::optional<double> parseNumber(std::string_view text);

}  // namespace nivlo
