// The modules of a matrix code.
#pragma once

#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// A square of modules, which are dark or light.
class Modules {
 public:
  /// All light.
  explicit Modules(int across) : across_(across), dark_(static_cast<std::size_t>(across) * across) {}

  int across() const { return across_; }
  bool isDark(int x, int y) const { return dark_[static_cast<std::size_t>(y) * across_ + x]; }
  void set(int x, int y, bool dark) { dark_[static_cast<std::size_t>(y) * across_ + x] = dark; }

 private:
  int across_;
  std::vector<bool> dark_;
};

/// Draws them for a decoder, with a quiet zone around.
void draw(const Modules& modules, LumaBuffer& drawing);

/// The place among the modules that a place of their drawing shows.
CGPoint placeShown(CGPoint onDrawing);

}  // namespace nivlo
