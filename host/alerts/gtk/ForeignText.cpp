#include "host/alerts/gtk/ForeignText.hpp"

#include <algorithm>
#include <optional>

#include <fmt/format.h>
#include <glib.h>

#include "host/text/ReadingOrder.hpp"
#include "linux/names/HostName.hpp"

namespace nivlo {

namespace {

constexpr auto kNulSymbol = "\u2400";
constexpr auto kLineBreakSymbol = "\u21b5";
constexpr auto kRightToLeftIsolate = "\u2067";
constexpr double kOtherScale = 0.5;
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
    // A hyphen inserted at the end of a line would look like part of the text.
    apply(pango_attr_insert_hyphens_new(FALSE), {0, PANGO_ATTR_INDEX_TO_TEXT_END});
  }

  void add(std::string_view bytes) { result_.text += bytes; }

  void addLineBreak(std::string_view bytes) {
    const bool secondHalf = bytes == "\n" && result_.text.ends_with('\r');
    if (!secondHalf) {
      addNote(kLineBreakSymbol);
    }
    add(bytes);
  }

  void addMark(std::string_view mark) {
    const auto begin = result_.text.size();
    result_.text += mark;
    apply(pango_attr_foreground_alpha_new(kMarkOpacity), {begin, result_.text.size()});
  }

  /// Adds a mark that stands for nothing in the text.
  void addNote(std::string_view mark) {
    result_.added.push_back({result_.text.size(), result_.text.size() + mark.size()});
    addMark(mark);
  }

  /// Lets the rest of the line, which follows a space, be read from right to left.
  void addIsolate() {
    const auto begin = result_.text.size();
    result_.text += kRightToLeftIsolate;
    result_.added.push_back({begin, result_.text.size()});
    // The isolate itself stays hidden. Pango shows or hides a run as a whole, only another font, here another
    // size, begins a new run, and what ends where a run begins still counts for it.
    apply(pango_attr_scale_new(kOtherScale), result_.added.back());
    showFrom(shownFrom_, begin - 1);
    shownFrom_ = result_.text.size();
  }

  void beginHost() { hostBegin_ = result_.text.size(); }
  void endHost() { apply(pango_attr_weight_new(PANGO_WEIGHT_BOLD), {hostBegin_, result_.text.size()}); }

  LabelText finish() {
    showFrom(shownFrom_, PANGO_ATTR_INDEX_TO_TEXT_END);
    return std::move(result_);
  }

 private:
  void apply(PangoAttribute* attribute, TextRange range) {
    attribute->start_index = static_cast<guint>(range.begin);
    attribute->end_index = static_cast<guint>(range.end);
    pango_attr_list_insert(result_.attributes.get(), attribute);
  }

  void showFrom(std::size_t begin, std::size_t end) {
    apply(pango_attr_show_new(PANGO_SHOW_IGNORABLES), {begin, end});
  }

  LabelText result_;
  std::size_t shownFrom_ = 0;
  std::size_t hostBegin_ = 0;
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

/// The name that a host in another script is looked up by, for it may look like a different one; else empty.
std::string realName(std::string_view host) {
  const auto name = asciiHostName(host);
  return name && *name != host ? fmt::format(" ({})", *name) : "";
}

/// The place after which the first line is read from right to left. A message often is some words, a colon
/// and a foreign text; without this, the text would be ordered as if it were a part of the words.
std::optional<std::size_t> rightToLeftPlace(std::string_view text) {
  constexpr std::string_view kColon = ": ";
  const auto colon = text.find(kColon);
  if (colon == std::string_view::npos) {
    return std::nullopt;
  }
  const auto begin = colon + kColon.size();
  const auto line = text.substr(begin, text.find_first_of("\r\n", begin) - begin);
  return readsRightToLeft(line) ? std::optional(begin) : std::nullopt;
}

}  // namespace

LabelText foreignText(std::string_view text) {
  LabelTextBuilder label;
  const auto none = text.size() + 1;
  const auto host = linkHost(text).value_or(TextRange{none, none});
  const auto isolate = rightToLeftPlace(text);
  for (std::size_t place = 0;;) {
    if (place == host.end) {
      label.endHost();
      label.addNote(realName(text.substr(host.begin, host.end - host.begin)));
    }
    if (place >= text.size()) {
      return label.finish();
    }
    if (place == isolate) {
      label.addIsolate();
    }
    if (place == host.begin) {
      label.beginHost();
    }
    place += addNext(label, text.substr(place));
  }
}

std::string withoutAdditions(const LabelText& label, TextRange part) {
  std::string result;
  for (const auto& added : label.added) {
    if (added.begin >= part.end) {
      break;
    }
    if (added.begin >= part.begin) {
      result += label.text.substr(part.begin, added.begin - part.begin);
    }
    part.begin = std::clamp(added.end, part.begin, part.end);
  }
  return result + label.text.substr(part.begin, part.end - part.begin);
}

}  // namespace nivlo
