// The modules of a matrix code.
#pragma once

#include <cstddef>
#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// A square of modules, each dark or light. Coordinates must lie within it.
class Modules {
 public:
  /// Makes a square of `across` by `across` modules, all light.
  explicit Modules(int across) : across_(across), dark_(static_cast<std::size_t>(across) * across) {}

  int across() const { return across_; }
  bool isDark(int x, int y) const { return dark_[static_cast<std::size_t>(y) * across_ + x]; }
  void set(int x, int y, bool dark) { dark_[static_cast<std::size_t>(y) * across_ + x] = dark; }

 private:
  int across_;
  std::vector<bool> dark_;
};

/// Draws the modules with a quiet zone around them, in black and white, for a decoder.
void draw(const Modules& modules, LumaBuffer& drawing);

/// Converts a place in the drawing to modules.
CGPoint placeShown(CGPoint onDrawing);

}  // namespace nivlo
