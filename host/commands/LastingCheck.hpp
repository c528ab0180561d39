// Checks that a wallpaper which the desktop starts can ever be shown as asked.
#pragma once

#include <string>

#include "host/commands/RunOptions.hpp"

namespace nivlo {

struct LastingCheck {
  std::string refusal;  ///< why it can never work, as a sentence for users; empty if it can
  std::string note;     ///< what is missing only at present; empty if nothing is
};

/// Opens the bundle and reads the pictures, films and scripts that the options name, as the program would do
/// at its start, and looks for the output. What may be plugged in later, such as a camera or a screen, is not
/// refused. Takes a few seconds at most for each film. Main thread only.
LastingCheck checkLasting(const RunOptions& options);

}  // namespace nivlo
