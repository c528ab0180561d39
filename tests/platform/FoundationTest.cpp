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

TEST(URL, AcceptsWhatIsNoneOrChangesItsBytes) {
  for (const std::string good :
       {"http://example.org/a?b=%20c#d", "HTTPS://[::1]:8080/~x", "mailto:a@b.c", "x+y-z.1:", "tel:+491"}) {
    const auto url = NSURL::URLWithString(good);
    ASSERT_TRUE(url) << good;
    EXPECT_EQ(url->absoluteString(), good);
  }
  EXPECT_EQ(NSURL::URLWithString("HTTPS://A.b")->scheme(), "https");
  using namespace std::string_literals;
  for (const auto& bad :
       {""s, "example.org"s, "://x"s, "1http://x"s, "http://a b"s, "http://ä.de"s, "http://x/%2"s,
        "http://x/%zz"s, "http://x/%"s, " http://x"s, "http://x\n"s, "http://x/\0"s, "ht_tp://x"s, "/a:b"s}) {
    EXPECT_FALSE(NSURL::URLWithString(bad)) << bad;
  }
}

}  // namespace
}  // namespace nivlo
