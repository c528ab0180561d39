// Reading the attributes of devices in sysfs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nivlo {

/// The content of an attribute.
struct AttributeText {
  std::string text;  ///< usually ends in a line end; empty after an error
  int error = 0;     ///< an errno value; 0 for success
};

/// Reads an attribute, of which the kernel may ask the hardware, so this may take seconds. Opens the file
/// each time, because an open file would not notice that its device was replaced by another.
AttributeText readAttribute(const std::string& path);

/// Parses the decimal number at the start of a text as sysfs writes it, whatever the locale. Absent when
/// there is none, and when it is not finite.
std::optional<double> parseNumber(std::string_view text);

}  // namespace nivlo
