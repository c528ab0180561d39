// What a demo camera looks at.
#pragma once

#include <cairo.h>

namespace nivlo {

inline constexpr int sceneWidth = 1280;  ///< pixels
inline constexpr int sceneHeight = 720;  ///< pixels

class DemoScene {
 public:
  virtual ~DemoScene() = default;

  /// Covers the whole picture, `sceneWidth` by `sceneHeight`, with the scene as it is at a time from 0 on.
  /// The same time always gives the same picture. Callable from any thread, several at once on different
  /// surfaces.
  virtual void draw(cairo_t* cairo, double seconds) const = 0;
};

}  // namespace nivlo
