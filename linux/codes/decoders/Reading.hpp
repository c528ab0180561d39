// What one pass of a decoder read.
#pragma once

#include <string>
#include <vector>

#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

struct Reading {
  std::string type;  ///< metadata-object type identifier
  std::string text;  ///< valid UTF-8; may be empty, may hold NUL
  Quad outline;      ///< in pixels of the picture that was read
  /// 1-D codes carry no error correction, and where on their bars they were read says little of their height.
  bool isLinear = false;
  /// Whether the picture says so much more clearly than any other text of this type that nothing needs to
  /// confirm it.
  bool isCertain = false;
};

/// Whether both were read at about the same place.
bool meet(const Reading& first, const Reading& second);

/// Leaves one of several readings of the same code: equal type and text, and outlines that meet. Equal labels
/// at different places are different codes. Drops UPC-E where an EAN-13 was read at the same place, of which
/// it is a misread part.
std::vector<Reading> withoutDuplicates(std::vector<Reading> readings);

/// Puts the code that the user points at last: nearest to the picture's centre, and the largest among about
/// equally near.
void sortPointedAtLast(std::vector<Reading>& readings, int pictureWidth, int pictureHeight);

}  // namespace nivlo
