#include "host/alerts/gtk/ForeignText.hpp"

#include <fmt/format.h>
#include <glib.h>

#include "host/text/LinkHost.hpp"

namespace nivlo {

namespace {

constexpr auto kNulSymbol = "\u2400";
constexpr auto kLineBreakSymbol = "\u21b5";
constexpr guint16 kMarkOpacity = G_MAXUINT16 / 2;

bool isDirectional(gunichar c) {
  return c == 0x61c || c == 0x200e || c == 0x200f || (c >= 0x202a && c <= 0x202e) ||
         (c >= 0x2066 && c <= 0x2069);
}

/// Tag characters mirror ASCII but are invisible in a label.
bool isTag(gunichar c) { return c >= 0xe0000 && c <= 0xe007f; }

bool isLineBreak(gunichar c) { return c == '\n' || c == '\r' || c == 0x2028 || c == 0x2029; }

class LabelTextBuilder {
 public:
  LabelTextBuilder() {
    result_.attributes.reset(pango_attr_list_new());
    apply(pango_attr_show_new(PANGO_SHOW_IGNORABLES), {0, PANGO_ATTR_INDEX_TO_TEXT_END});
    // A hyphen inserted at the end of a line would look like part of the text.
    apply(pango_attr_insert_hyphens_new(FALSE), {0, PANGO_ATTR_INDEX_TO_TEXT_END});
  }

  void add(std::string_view bytes) { result_.text += bytes; }

  void addLineBreak(std::string_view bytes) {
    const bool secondHalf = bytes == "\n" && result_.text.ends_with('\r');
    if (!secondHalf) {
      addMark(kLineBreakSymbol);
    }
    add(bytes);
  }

  void addMark(std::string_view mark) {
    const auto begin = result_.text.size();
    result_.text += mark;
    apply(pango_attr_foreground_alpha_new(kMarkOpacity), {begin, result_.text.size()});
  }

  LabelText finish() {
    if (const auto host = linkHost(result_.text)) {
      apply(pango_attr_weight_new(PANGO_WEIGHT_BOLD), *host);
    }
    return std::move(result_);
  }

 private:
  void apply(PangoAttribute* attribute, TextRange range) {
    attribute->start_index = static_cast<guint>(range.begin);
    attribute->end_index = static_cast<guint>(range.end);
    pango_attr_list_insert(result_.attributes.get(), attribute);
  }

  LabelText result_;
};

void addCharacter(LabelTextBuilder& label, gunichar character, std::string_view bytes) {
  if (isDirectional(character) || isTag(character)) {
    label.addMark(fmt::format("\\u{{{:x}}}", character));
  } else if (isLineBreak(character)) {
    label.addLineBreak(bytes);
  } else {
    label.add(bytes);
  }
}

/// Adds the first character of the text, or its first byte where that is not UTF-8. Returns the bytes taken.
std::size_t addNext(LabelTextBuilder& label, std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first == 0) {
    label.addMark(kNulSymbol);
    return 1;
  }
  const auto character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
  if (character >= static_cast<gunichar>(-2)) {
    label.addMark(fmt::format("\\x{:02x}", first));
    return 1;
  }
  const auto size = static_cast<unsigned char>(g_utf8_skip[first]);
  addCharacter(label, character, text.substr(0, size));
  return size;
}

}  // namespace

LabelText foreignText(std::string_view text) {
  LabelTextBuilder label;
  while (!text.empty()) {
    text.remove_prefix(addNext(label, text));
  }
  return label.finish();
}

}  // namespace nivlo
