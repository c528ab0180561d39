#include <gtest/gtest.h>

#include "platform/Foundation/NSString+Format.hpp"
#include "platform/Foundation/NSURL.hpp"

namespace nivlo {
namespace {

struct Described {
  std::string description() const { return "<described>"; }
};

TEST(Format, LosesBytesOfItsArguments) {
  using namespace std::string_literals;
  EXPECT_EQ(stringWithFormat("%@ %d %.2f %s %x %%", Described(), -3, 1.005, "text", 255),
            "<described> -3 1.00 text ff %");
  EXPECT_EQ(stringWithFormat("[%@|%5@|%-5@]", "äöü 漢"s, "ab", "cd"), "[äöü 漢|   ab|cd   ]");
  EXPECT_EQ(stringWithFormat("%@!", "a\0b"s), "a\0b!"s);
  EXPECT_EQ(stringWithFormat("%f, %ld, %lu", 2.0, -5L, 7UL), "2.000000, -5, 7");
  EXPECT_EQ(stringWithFormat("%@", "%d %s"), "%d %s");
}

TEST(Format, ThrowsWhenAnArgumentDoesNotFit) {
  const auto isMarked = [](const std::string& line, const std::string& format) {
    return line.starts_with("<format error: ") && line.ends_with(": " + format + ">");
  };
  EXPECT_TRUE(isMarked(stringWithFormat("%d", "text"), "%d"));
  EXPECT_TRUE(isMarked(stringWithFormat("%f", "text"), "%f"));
  EXPECT_TRUE(isMarked(stringWithFormat("%@ and %@", "one"), "%@ and %@"));
  EXPECT_TRUE(isMarked(stringWithFormat("all %"), "all %"));
}

TEST(URL, AValidURLKeepsItsBytesAndAnythingElseBecomesWhatABrowserWouldMakeOfIt) {
  const auto repaired = [](std::string_view text) {
    const auto url = NSURL::URLWithString(text);
    return url ? url->absoluteString() : "none";
  };
  using namespace std::string_literals;
  for (const std::string good :
       {"http://example.org/a?b=%20c#d", "HTTPS://[::1]:8080/~x", "mailto:a@b.c", "x+y-z.1:", "tel:+491",
        "tel://", "file:///a", "http://user:word@b%C3%BC.de:65535?a=b//c", "x://a:b", "http://x/100%"}) {
    EXPECT_EQ(repaired(good), good);
  }
  EXPECT_EQ(repaired(" \t https://a.de/b c\n "), "https://a.de/b%20c");
  EXPECT_EQ(repaired("https://a.de/\r\nb"), "https://a.de/b");
  EXPECT_EQ(repaired("https://bücher.de/中?q={a|b}^`<\">"),
            "https://b%C3%BCcher.de/%E4%B8%AD?q=%7Ba%7Cb%7D%5E%60%3C%22%3E");
  EXPECT_EQ(repaired("https:\\\\a.de\\b?c\\d"), "https://a.de/b?c%5Cd");
  EXPECT_EQ(repaired("https:///a.de"), "https://a.de");
  EXPECT_EQ(repaired("x://a\\b\0"s), "x://a%5Cb");
  EXPECT_EQ(NSURL::URLWithString("HTTPS://A.b")->scheme(), "https");
  for (const auto& bad : {""s, "example.org"s, "://x"s, "1http://x"s, "ht_tp://x"s, "/a:b"s, "https://"s,
                          "https://:80"s, "https://[::1"s, "https://[]"s, "https://[::1]x"s,
                          "https://[g::1]"s, "https://a b.de"s, "https://a%20b"s, "https://a.de:x"s,
                          "https://a.de:65536"s, "https://user@"s, "https://a^b"s, "x://[::1"s}) {
    EXPECT_EQ(repaired(bad), "none") << bad;
  }
  EXPECT_FALSE(NSURL::URLWithString("file:///a%2")->filePath());
}

}  // namespace
}  // namespace nivlo
