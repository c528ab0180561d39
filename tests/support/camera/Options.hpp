// The command line of nivlo-test-camera.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/support/pictures/Encoding.hpp"

namespace nivlo::test {

struct CameraOptions {
  std::string name;
  std::string description;
  std::string location;          ///< empty when the camera does not say
  std::string rotation;          ///< of the sensor, in degrees; empty when the camera does not say
  std::optional<int> transform;  ///< of each buffer, in degrees, counter-clockwise
  std::vector<Mode> modes;       ///< at least one
  Colorimetry colorimetry;
  int padding = 0;  ///< bytes at the end of each row
  int buffers = 0;  ///< how many the camera can have at most; 0 for plenty
  std::optional<Picture::Color> color;
  std::string picture;
};

/// Prints what is wrong, or the help that was asked for, and returns nothing when there is nothing to run.
std::optional<CameraOptions> parseOptions(const std::vector<std::string>& arguments);

}  // namespace nivlo::test
