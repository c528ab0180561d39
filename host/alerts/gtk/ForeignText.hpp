// Makes foreign text safe to show in a label.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <pango/pango.h>

#include "host/text/LinkHost.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

/// A label's text with its Pango attributes, which foreign text cannot forge as it could forge markup.
struct LabelText {
  std::string text;  ///< valid UTF-8 without NUL
  Owned<PangoAttrList, pango_attr_list_unref> attributes;
  std::vector<TextRange> added;  ///< what only the label has, in order: it would be wrong in a copy
};

/// Returns the text in a form in which nothing is hidden and nothing can change the reading order.
/// Directional controls, tag characters and bytes that are not UTF-8 are replaced by dimmed escapes, and NUL
/// by a dimmed symbol; everything else stays byte for byte. A dimmed mark precedes each line break, so that a
/// text cannot pretend to be several messages. The host of a link is bold, and followed by the dimmed name
/// that it is looked up by where it has letters beyond ASCII. What follows the first colon of a message keeps
/// its own reading order if it reads from right to left.
LabelText foreignText(std::string_view text);

/// Returns a part of the label's text without what was added to it. Escapes stay.
std::string withoutAdditions(const LabelText& label, TextRange part);

}  // namespace nivlo
