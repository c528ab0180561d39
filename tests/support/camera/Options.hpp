// The command line of nivlo-test-camera. The program publishes a PipeWire camera until it is terminated, and
// prints "streaming" and "paused" as readers come and go.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/support/pictures/Encoding.hpp"

namespace nivlo::test {

struct CameraOptions {
  std::string name;      ///< --name
  std::string location;  ///< --location front, back or external; empty for a camera that does not tell
  std::string rotation;  ///< --rotation of the sensor in degrees; empty for a camera that does not tell
  std::optional<int> transform;  ///< --transform of each buffer, in degrees counter-clockwise
  std::vector<Mode> modes;       ///< --format, --size WxH and --fps; --also FORMAT:WxH@FPS
  Colorimetry colorimetry;       ///< --matrix 601 or 709, --range full or limited
  int padding = 0;               ///< --padding, bytes at the end of each row
  int buffers = 0;               ///< --buffers, the most that the camera takes; 0 for plenty
  std::string memory;    ///< --memory sealed, unsealed, shrinking or small, of its own; empty for PipeWire's
  std::string mischief;  ///< --mischief chunks or jpeg, with memory of its own: it lies about the places of
                         ///< pictures, or changes them while they are decoded
  std::optional<Picture::Color> color;  ///< --color RRGGBB of the whole picture
  std::string picture;                  ///< --picture FILE; without either, quadrantPicture()
};

/// Throws std::logic_error when an argument is unknown, lacks its value or cannot be parsed.
CameraOptions parseOptions(const std::vector<std::string>& arguments);

}  // namespace nivlo::test
