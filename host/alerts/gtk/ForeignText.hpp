// Foreign text made fit for a label.
#pragma once

#include <string>
#include <string_view>

#include <pango/pango.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// A text as a label takes it, with attributes instead of markup.
struct LabelText {
  std::string text;  ///< valid UTF-8 without NUL
  Owned<PangoAttrList, pango_attr_list_unref> attributes;
};

/// The text, in which nothing is hidden and nothing can change the order in which it is read. It stays byte
/// for byte; only what a label would not show, or would obey, has a dimmed mark in its place: an escape for
/// directional controls, tag characters and bytes that are not UTF-8, a symbol for NUL. A line break has such
/// a mark before it. The host of a link is bold.
LabelText foreignText(std::string_view text);

}  // namespace nivlo
