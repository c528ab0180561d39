// The command line of nivlo-test-camera, which publishes a PipeWire camera until it is ended, and prints
// "streaming" and "paused" as its readers come and go.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/support/pictures/Encoding.hpp"

namespace nivlo::test {

struct CameraOptions {
  std::string name;              ///< --name
  std::string location;          ///< --location front, back or external; empty when the camera does not say
  std::string rotation;          ///< --rotation of the sensor, in degrees; empty when the camera does not say
  std::optional<int> transform;  ///< --transform of each buffer, in degrees, counter-clockwise
  std::vector<Mode> modes;       ///< --format, --size WxH and --fps; --also FORMAT:WxH@FPS
  Colorimetry colorimetry;       ///< --matrix 601 or 709, --range full or limited
  int padding = 0;               ///< --padding, bytes at the end of each row
  int buffers = 0;               ///< --buffers, how many it can have at most; 0 for plenty
  std::optional<Picture::Color> color;  ///< --color RRGGBB, all over the picture
  std::string picture;                  ///< --picture, a file; without either, four coloured quarters
};

/// Throws std::logic_error, with what is wrong.
CameraOptions parseOptions(const std::vector<std::string>& arguments);

}  // namespace nivlo::test
