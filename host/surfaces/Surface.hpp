// Where the wallpaper is shown.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/render/ViewLayout.hpp"

namespace nivlo {

/// What a surface tells the program, on the main thread, never before `show` has returned.
struct SurfaceHandlers {
  std::function<void()> drawn;                         ///< a new picture has been handed to the screen
  std::function<void(bool visible)> visible;           ///< whether any of it can be seen; it begins visible
  std::function<void()> closed;                        ///< a person closed it
  std::function<void(const std::string& cause)> lost;  ///< the display is gone; nothing is drawn any more
};

/// What hides a wallpaper, on the outputs that it concerns.
enum class PausePolicy {
  Covered,     ///< maximised and fullscreen windows, or whatever else covers an output
  Fullscreen,  ///< fullscreen windows only
  Never,       ///< no window
};

/// What is asked of a surface when it is opened.
struct SurfaceOptions {
  int width = 1920;    ///< pixels, of a surface that no screen gives its size to
  int height = 1080;   ///< pixels
  std::string output;  ///< the name of the only output to show it on; empty: all of them
  PausePolicy pause = PausePolicy::Covered;
};

/// One view on one or several outputs. Main thread only.
class Surface {
 public:
  Surface() = default;
  virtual ~Surface() = default;
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  /// What it is, for people: "the desktop (Wayland)".
  virtual std::string name() const = 0;

  /// Pixels, of the first output; what a view should be laid out for.
  virtual CGSize size() const = 0;

  /// Shows the view from now on, drawing whenever it has a new picture and the screen wants one. Once only.
  virtual void show(LaidOutView view) = 0;
};

}  // namespace nivlo
