// Makes a camera's picture from a photo.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo::bench {

/// Returns the middle of the photo, scaled so that it fills a frame of this size in pixels.
LumaBuffer cameraPicture(const LumaPicture& photo, int width, int height);

}  // namespace nivlo::bench
