// Follows the modules of a matrix code over paper or cloth that is bent.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "linux/codes/matrix/Modules.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/PerspectiveMap.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// A square of modules, with the place of each in a picture. Places in the square are in modules from its top
/// left. Used by one thread at a time.
class ModuleGrid {
 public:
  /// Lays a flat grid of `modules` by `modules`, at least 4, over `outline`, which is in pixels of the
  /// picture.
  ModuleGrid(const LumaPicture& picture, const Quad& outline, int modules);

  /// A place of the square of which it is known where the picture shows it.
  struct Anchor {
    CGPoint place;
    CGPoint inPicture;
  };

  /// Bends the grid as the code is bent. Starts at the anchors and goes on from neighbour to neighbour. Each
  /// part of the grid moves to where the middles of its modules are most even in brightness, but not far from
  /// where its neighbours suggest that it lies.
  void follow(const std::vector<Anchor>& anchors);

  /// Looks for the alignment pattern near the corner without a finder, which all QR codes but the smallest
  /// have.
  std::optional<Anchor> findAlignment(bool lightOnDark) const;

  /// Returns which modules are dark.
  Modules modules(bool lightOnDark) const;

  /// Returns where the picture shows a place of the square.
  CGPoint inPicture(CGPoint place) const { return toPicture_(onStraight(place)); }

 private:
  /// The grid bends at its nodes and is interpolated in between.
  struct Node {
    CGPoint place;
    CGPoint shift;  ///< pixels of the straightened picture, from where the flat grid has the node
    bool isKnown = false;
  };
  /// The shift at a node, and how it changes around it.
  struct Slope {
    CGPoint shift;
    CGPoint perColumn;  ///< change for each module to the right
    CGPoint perRow;     ///< change for each module down
  };
  /// A node in the order in which `follow` visits them.
  struct Step {
    int column = 0;
    int row = 0;
    double distance = 0;  ///< modules from the nearest anchor
    CGPoint shift;        ///< of that anchor
  };

  Node& node(int column, int row) { return nodes_[static_cast<std::size_t>(row) * nodesAcross_ + column]; }
  const Node& node(int column, int row) const {
    return nodes_[static_cast<std::size_t>(row) * nodesAcross_ + column];
  }
  void computeMeans();
  void computeEdgeStrength();
  double alignmentLikeness(CGPoint place, int dx, int dy, bool lightOnDark) const;
  Step stepTo(int column, int row, const std::vector<Anchor>& anchors) const;
  Slope slopeAt(int column, int row) const;
  void settle(Node& settled, const Slope& expected, double radius) const;
  double edgeStrengthAround(CGPoint place, const Slope& slope) const;
  CGPoint onStraight(CGPoint place) const;

  int across_;  ///< modules
  int nodesAcross_;
  double nodeSpacing_;  ///< modules
  PerspectiveMap toPicture_;
  LumaBuffer straight_;      ///< the square and a border, straightened as if it were flat
  LumaBuffer means_;         ///< one pixel per module: the mean brightness around it
  LumaBuffer edgeStrength_;  ///< change of brightness around each pixel of the straightened picture
  std::vector<Node> nodes_;
};

}  // namespace nivlo
