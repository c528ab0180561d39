// One code as one pass of a decoder read it, and how such readings are merged and ordered.
#pragma once

#include <string>
#include <vector>

#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

struct Reading {
  std::string type;  ///< metadata-object type identifier
  std::string text;  ///< valid UTF-8; may be empty, may contain NUL
  Quad outline;      ///< in pixels of the picture that was read
  /// True for a 1-D code. Its outline may then be shorter than its bars, because decoders read 1-D codes
  /// along a few scan lines.
  bool isLinear = false;
  /// True if this text fits the picture so much better than any other of its type that it counts without
  /// confirmation.
  bool isCertain = false;
};

/// Returns whether the outlines overlap or nearly do.
bool meet(const Reading& first, const Reading& second);

/// Keeps the first of several readings of the same code, which have equal type and text and outlines that
/// meet. Equal labels at different places are different codes and are all kept. Also drops each UPC-E that
/// meets an EAN-13, of which it is a misread part.
std::vector<Reading> withoutDuplicates(std::vector<Reading> readings);

/// Sorts the code that the user points at to the end: the one nearest to the picture's centre, and the
/// largest of those that are about equally near. The picture's size is in pixels.
void sortPointedAtLast(std::vector<Reading>& readings, int pictureWidth, int pictureHeight);

}  // namespace nivlo
