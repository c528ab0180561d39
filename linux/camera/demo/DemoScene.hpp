// The interface of the scenes that demo cameras see.
#pragma once

#include <cairo.h>

namespace nivlo {

inline constexpr int kSceneWidth = 1280;  ///< pixels
inline constexpr int kSceneHeight = 720;  ///< pixels

class DemoScene {
 public:
  virtual ~DemoScene() = default;

  /// Draws the scene as it is at a time, in seconds from 0 on, over the whole picture. The same time always
  /// gives the same picture. Callable from any thread, and from several at once as long as each has its own
  /// surface.
  virtual void draw(cairo_t* cairo, double seconds) const = 0;
};

}  // namespace nivlo
