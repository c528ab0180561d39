#include "host/text/ReadingOrder.hpp"

#include <utf8proc.h>

namespace nivlo {

bool readsRightToLeft(std::string_view text) {
  while (!text.empty()) {
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    if (length < 1) {
      return false;
    }
    switch (utf8proc_get_property(codePoint)->bidi_class) {
      case UTF8PROC_BIDI_CLASS_L:
        return false;
      case UTF8PROC_BIDI_CLASS_R:
      case UTF8PROC_BIDI_CLASS_AL:
        return true;
      default:
        text.remove_prefix(static_cast<std::size_t>(length));
    }
  }
  return false;
}

}  // namespace nivlo
