// Follows the modules of a matrix code over paper or cloth that is bent.
#pragma once

#include <optional>
#include <vector>

#include "linux/codes/decoders/Decoder.hpp"
#include "linux/codes/matrix/Modules.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/PerspectiveMap.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// A square of modules and where the picture shows each of them. Places in the square count in modules, from
/// its top left. Used by one thread at a time.
class ModuleGrid {
 public:
  /// What it takes to follow and to draw it and to read the drawing, as ReadingStrategy::cost counts it.
  static double cost(int modules) { return 500.0 * modules * modules; }

  /// As the outline has it, which is that of `modules` by `modules` of them, from 4 on.
  ModuleGrid(const LumaPicture& picture, const Quad& outline, int modules);

  /// A place of the square, and where the picture shows it.
  struct Sighting {
    CGPoint place;
    CGPoint inPicture;
  };

  /// Finds out how the code is bent. Goes from what is known to its neighbours, and puts each part of the
  /// grid where the middles of its modules are most even, not far from where the parts that are already known
  /// lead one to expect it.
  void follow(const std::vector<Sighting>& known);

  /// Looks for the pattern that all QR codes but the smallest have near the corner without a finder.
  std::optional<Sighting> findAlignment(bool lightOnDark) const;

  /// What the modules are.
  Modules modules(bool lightOnDark) const;

  /// What the decoder reads in a drawing of them, with outlines in the picture's pixels. May throw.
  std::vector<Reading> read(const Modules& modules, const Decoder& decoder) const;

  /// Where the picture shows a place of the square.
  CGPoint inPicture(CGPoint place) const { return toPicture_(onStraight(place)); }

 private:
  struct Node {
    CGPoint place;
    CGPoint shift;  ///< in the straightened picture, from where the outline has it
    bool isKnown = false;
  };
  /// How the shift goes on around a node.
  struct Slope {
    CGPoint shift;
    CGPoint perColumn;  ///< for each module to the right
    CGPoint perRow;
  };

  Node& node(int column, int row) { return nodes_[static_cast<std::size_t>(row) * nodesAcross_ + column]; }
  const Node& node(int column, int row) const {
    return nodes_[static_cast<std::size_t>(row) * nodesAcross_ + column];
  }
  void findMeans();
  void findUnrest();
  Slope slopeAt(int column, int row) const;
  void settle(Node& settled, const Slope& expected, double room) const;
  double unrestAround(CGPoint place, const Slope& slope) const;
  CGPoint onStraight(CGPoint place) const;

  int across_;  ///< modules
  int nodesAcross_;
  double nodeSpacing_;
  PerspectiveMap toPicture_;
  LumaBuffer straight_;
  LumaBuffer means_;   ///< of what is around each module
  LumaBuffer unrest_;  ///< how much brightness changes near each pixel of the straightened picture
  std::vector<Node> nodes_;
};

}  // namespace nivlo
