// The least that a background can cost: the same picture, committed again and again.
#pragma once

namespace nivlo::bench {

/// Shows a picture of 1280x720 pixels as the background and commits it anew 30 times a second, until the
/// compositor is gone. Returns the exit status.
int runFloor();

}  // namespace nivlo::bench
