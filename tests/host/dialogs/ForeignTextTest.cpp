// Foreign text must not deceive its reader.
#include <gmock/gmock.h>
#include <pango/pangocairo.h>

#include "host/alerts/gtk/ForeignText.hpp"
#include "host/text/LinkHost.hpp"

namespace nivlo::test {

namespace {

using namespace std::string_literals;

std::string hostIn(std::string_view text) {
  const auto range = linkHost(text);
  return std::string(range ? text.substr(range->begin, range->end - range->begin) : "none");
}

TEST(ForeignTextTest, TheBoldHostIsTheOneThatABrowserWouldVisit) {
  EXPECT_EQ(hostIn("Get an URL link: https://example.org:8080/a@b?c"), "example.org");
  EXPECT_EQ(hostIn("https://bank.example@evil.example/"), "evil.example");
  EXPECT_EQ(hostIn("https://bank.example:443@x@evil.example:80?@bank.example"), "evil.example");
  EXPECT_EQ(hostIn("https://evil.example\\@bank.example/"), "evil.example");
  EXPECT_EQ(hostIn("https:///evil.example#@bank.example"), "evil.example");
  EXPECT_EQ(hostIn("http://user@[2001:db8::1]:80/"), "[2001:db8::1]");
  for (const auto* without : {"tel://", "https://:80", "https://[::1", "https://", "file:///etc/passwd",
                              "otpauth://totp/Bank:me?secret=A", "spotify://track/1"}) {
    EXPECT_EQ(hostIn(without), "none") << without;
  }
  EXPECT_EQ(hostIn("rtsp://camera.example:554/1"), "camera.example");
  EXPECT_EQ(hostIn("no link: at all"), "none");
}

TEST(ForeignTextTest, NothingIsHiddenOrReorderedAndTheRestStaysByteForByte) {
  EXPECT_EQ(foreignText("<b>a</b> _x &amp;\tß\u200b 中\x1b[0m").text, "<b>a</b> _x &amp;\tß\u200b 中\x1b[0m");
  EXPECT_EQ(foreignText("a\u202e\u2067\u200f\U000e0041z").text, "a\\u{202e}\\u{2067}\\u{200f}\\u{e0041}z");
  EXPECT_EQ(foreignText("a\0b\xff\xe4\xbd"s).text, "a\u2400b\\xff\\xe4\\xbd");
  EXPECT_EQ(foreignText("a\nb\r\nc\u2029").text, "a\u21b5\nb\u21b5\r\nc\u21b5\u2029");
}

TEST(ForeignTextTest, AHostBeyondASCIIIsFollowedByTheNameThatItIsLookedUpBy) {
  EXPECT_EQ(foreignText("https://p\u0430ypal.com/").text, "https://p\u0430ypal.com (xn--pypal-4ve.com)/");
  EXPECT_EQ(foreignText("https://fa\u00df.de:80").text, "https://fa\u00df.de (xn--fa-hia.de):80");
  EXPECT_EQ(foreignText("https://b%C3%BCcher.de").text, "https://b%C3%BCcher.de (xn--bcher-kva.de)");
  EXPECT_EQ(foreignText("https://xn--bcher-kva.de/\u00fc").text, "https://xn--bcher-kva.de/\u00fc");
}

TEST(ForeignTextTest, ACopyOfASelectionHoldsNothingThatOnlyTheLabelHas) {
  const std::string text = "Link: \u05d0 https://b\u00fccher.de/\r\nb";
  const auto label = foreignText(text);
  EXPECT_EQ(withoutAdditions(label, {0, label.text.size()}), text);
  const auto name = label.text.find("xn--");
  EXPECT_EQ(withoutAdditions(label, {name, name + 5}), "");
  EXPECT_EQ(withoutAdditions(label, {label.text.find("cher"), name}), "cher.de");
  EXPECT_EQ(withoutAdditions(label, {0, 4}), "Link");
}

int widthOf(const std::string& text, PangoAttrList* attributes) {
  const Owned<PangoContext, g_object_unref> context(
      pango_font_map_create_context(pango_cairo_font_map_get_default()));
  const Owned<PangoLayout, g_object_unref> layout(pango_layout_new(context.get()));
  pango_layout_set_text(layout.get(), text.c_str(), -1);
  pango_layout_set_attributes(layout.get(), attributes);
  int width = 0;
  pango_layout_get_size(layout.get(), &width, nullptr);
  return width;
}

TEST(ForeignTextTest, ATextFromRightToLeftKeepsItsOwnDirectionAfterTheWordsBeforeIt) {
  EXPECT_EQ(foreignText("Code: \u05d0!\nb").text, "Code: \u2067\u05d0!\u21b5\nb");
  const auto label = foreignText("Code: \u05d0!");
  EXPECT_EQ(widthOf(label.text, label.attributes.get()), widthOf("Code: \u05d0!", nullptr))
      << "the isolate is seen";
  EXPECT_EQ(foreignText("Code: a \u05d0!").text, "Code: a \u05d0!");
}

}  // namespace

}  // namespace nivlo::test
