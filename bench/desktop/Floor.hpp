#pragma once

namespace nivlo::bench {

/// Shows one picture of 1280x720 as the background, committing it anew 30 times a second, until the
/// compositor is gone. Returns the exit status.
int runFloor();

}  // namespace nivlo::bench
