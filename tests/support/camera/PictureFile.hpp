// Pictures for a virtual camera, from files.
#pragma once

#include <optional>
#include <string>

#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// The picture in a file, scaled to the size asked for; nothing, and the cause in `error`, when it cannot be
/// read.
std::optional<Picture> pictureFromFile(const std::string& path, int width, int height, std::string& error);

}  // namespace nivlo::test
