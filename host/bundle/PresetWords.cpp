#include "host/bundle/PresetWords.hpp"

#include <fmt/format.h>

namespace nivlo {

std::string presetInWords(const NSDictionary& preset) {
  const bool front = isEqualToString(preset.objectForKey("cameraPosition"), "front");
  const bool scans = boolValue(preset.objectForKey("qr"));
  return fmt::format("the {} camera, codes are {}", front ? "front" : "back",
                     scans ? "offered" : "left alone");
}

}  // namespace nivlo
