// The interface of everything that can show the wallpaper.
#pragma once

#include <functional>
#include <string>

#include "host/render/ViewLayout.hpp"

namespace nivlo {

/// A surface's reports to the program, on the main thread and never before `show` has returned.
struct SurfaceHandlers {
  std::function<void()> drawn;  ///< a new picture has been handed to the screen
  std::function<void(bool visible)>
      visible;  ///< whether any of it can be seen has changed; it starts visible
  std::function<void(const std::string& what)>
      awaits;  ///< outputs have changed, and `awaited` may have; takes what that returns now
  std::function<void()> closed;                        ///< the user has closed it
  std::function<void(const std::string& cause)> lost;  ///< the display is gone, and nothing is drawn any more
};

/// The windows that count as hiding the wallpaper on the outputs that they cover.
enum class PausePolicy {
  Covered,     ///< maximised and fullscreen ones, and whatever else covers an output
  Fullscreen,  ///< fullscreen ones only
  Never,       ///< none
};

/// The layer of a Wayland desktop that the wallpaper belongs to. Both are below all windows.
enum class DesktopLayer {
  Auto,  ///< the bottom layer while the desktop draws a background of its own, else the background layer
  Background,  ///< the lowest one, which a desktop's own background may share and cover
  Bottom,      ///< the one above it, which hides the icons of the desktop's own background
};

/// The options with which a surface is opened.
struct SurfaceOptions {
  int width = 1920;    ///< pixels; for a surface whose size no screen decides
  int height = 1080;   ///< pixels
  std::string output;  ///< the name of the only output to show it on, once it is there; empty for all outputs
  PausePolicy pause = PausePolicy::Covered;
  DesktopLayer layer = DesktopLayer::Auto;
};

/// Shows one view on one or several outputs. Main thread only.
class Surface {
 public:
  Surface() = default;
  virtual ~Surface() = default;
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  /// Names the kind of surface to users: "the desktop (Wayland)".
  virtual std::string name() const = 0;

  /// The size of its first output in pixels, which a view should be laid out for.
  virtual CGSize size() const = 0;

  /// Names to users what must be there before anything can be seen: "the output eDP-1". Empty if
  /// nothing is missing.
  virtual std::string awaited() const { return {}; }

  /// Shows the view from now on, drawing whenever it has a new picture and the screen asks for one. May be
  /// called only once.
  virtual void show(LaidOutView view) = 0;
};

}  // namespace nivlo
