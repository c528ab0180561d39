#include <gtest/gtest.h>

#include "platform/Foundation/NSBundle.hpp"
#include "platform/Foundation/NSString+Format.hpp"
#include "platform/Foundation/NSURL.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo {
namespace {

struct Described {
  std::string description() const { return "<described>"; }
};

TEST(Format, KeepsEveryByteOfItsArguments) {
  using namespace std::string_literals;
  EXPECT_EQ(stringWithFormat("%@ %d %.2f %s %x %%", Described(), -3, 1.005, "text", 255),
            "<described> -3 1.00 text ff %");
  EXPECT_EQ(stringWithFormat("[%@|%5@|%-5@]", "äöü 漢"s, "ab", "cd"), "[äöü 漢|   ab|cd   ]");
  EXPECT_EQ(stringWithFormat("%@!", "a\0b"s), "a\0b!"s);
  EXPECT_EQ(stringWithFormat("%f, %ld, %lu", 2.0, -5L, 7UL), "2.000000, -5, 7");
  EXPECT_EQ(stringWithFormat("%@", "%d %s"), "%d %s");
}

TEST(Format, MarksALineThatDoesNotFitInsteadOfFailing) {
  const auto isMarked = [](const std::string& line, const std::string& format) {
    return line.starts_with("<format error: ") && line.ends_with(": " + format + ">");
  };
  EXPECT_TRUE(isMarked(stringWithFormat("%d", "text"), "%d"));
  EXPECT_TRUE(isMarked(stringWithFormat("%f", "text"), "%f"));
  EXPECT_TRUE(isMarked(stringWithFormat("%@ and %@", "one"), "%@ and %@"));
  EXPECT_TRUE(isMarked(stringWithFormat("all %"), "all %"));
}

TEST(URL, TakesOnlyWhatIsOneByteForByte) {
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

TEST(Dictionary, ReadsABooleanFromWhateverItHolds) {
  const NSDictionary options{{"true", true}, {"false", false}, {"one", 0.5},        {"zero", 0.0},
                             {"yes", "yes"}, {"t", "true"},    {"+007", " \t-007"}, {"0", "000"},
                             {"no", "NO"},   {"on", "on"},     {"empty", ""}};
  for (const auto* key : {"true", "one", "yes", "t", "+007"}) {
    EXPECT_TRUE(boolValue(options.objectForKey(key))) << key;
  }
  for (const auto* key : {"false", "zero", "0", "no", "on", "empty", "missing"}) {
    EXPECT_FALSE(boolValue(options.objectForKey(key))) << key;
  }
  EXPECT_TRUE(isEqualToString(options.objectForKey("no"), "NO"));
  EXPECT_FALSE(isEqualToString(options.objectForKey("true"), "true"));
  EXPECT_FALSE(isEqualToString(nullptr, ""));
}

TEST(BundleFolder, WithoutAReadableDescriptionIsNoBundleAndSaysWhy) {
  const test::TemporaryDirectory folder;
  for (const auto* text : {"", "no xml", "<plist><dict><key>a</key>", "<plist><array/></plist>"}) {
    if (*text) {
      folder.write("Info.plist", text);
    }
    std::string error;
    EXPECT_FALSE(NSBundle::bundleWithPath(folder.path(), &error)) << text;
    EXPECT_NE(error.find((folder.path() / "Info.plist").string()), std::string::npos) << error;
  }
}

TEST(BundleFolder, GivesItsDescriptionAndItsResources) {
  const test::TemporaryDirectory folder;
  folder.write("Info.plist",
               "<plist><dict><key>Name</key><string>a &amp; ü</string><key>Size</key><integer>3</integer>"
               "<key>List</key><array><string>x</string></array><key>Flag</key><true/></dict></plist>");
  const auto bell = folder.write("bell.m4a", "x");
  folder.write("folder.txt/file", "x");
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(folder.path(), &error);
  ASSERT_TRUE(bundle) << error;
  EXPECT_EQ(bundle->infoDictionary(), (NSDictionary{{"Name", "a & ü"}, {"Size", 3.0}, {"Flag", true}}));
  EXPECT_EQ(bundle->infoString("Name"), "a & ü");
  EXPECT_EQ(bundle->infoString("Size"), "");
  EXPECT_EQ(bundle->pathForResource("bell", "m4a"), bell);
  EXPECT_FALSE(bundle->pathForResource("bell", "wav"));
  EXPECT_FALSE(bundle->pathForResource("folder", "txt"));
  EXPECT_FALSE(NSBundle::bundleForClass("Unregistered"));
}

}  // namespace
}  // namespace nivlo
