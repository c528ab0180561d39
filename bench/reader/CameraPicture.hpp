// A photo as a camera of some size would give it.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo::bench {

/// The middle of the photo, scaled so that it fills a frame of that size.
LumaBuffer cameraPicture(const LumaPicture& photo, int width, int height);

}  // namespace nivlo::bench
