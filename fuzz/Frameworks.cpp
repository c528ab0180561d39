// Fuzzes the frameworks' parsers of foreign text: URLs, a bundle's Info.plist, string formats.
#include "fuzz/Check.hpp"

#include <cstdint>
#include <string>

#include "platform/Foundation/NSBundle.hpp"
#include "platform/Foundation/NSString+Format.hpp"
#include "platform/Foundation/NSURL.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::fuzz {
namespace {

void readURL(const std::string& text) {
  const auto url = NSURL::URLWithString(text);
  if (!url) {
    return;
  }
  const auto again = NSURL::URLWithString(url->absoluteString());
  check(again && again->absoluteString() == url->absoluteString(), "a URL keeps its bytes");
  check(!url->scheme().empty(), "a URL has a scheme");
  if (const auto path = url->filePath()) {
    check(path->is_absolute(), "the path of a file URL is absolute");
    check(NSURL::fileURLWithPath(*path).filePath() == path, "a path survives the round trip through a URL");
  }
}

void readInfoPlist(const std::string& text) {
  static const test::TemporaryDirectory folder;
  folder.write("Info.plist", text);
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(folder.path(), &error);
  check((bundle == nullptr) == !error.empty(), "there is either a bundle or an error");
  if (!bundle) {
    return;
  }
  for (const auto& [key, value] : bundle->infoDictionary().entries()) {
    const auto* kept = bundle->infoDictionary().objectForKey(key);
    check(kept == &value, "each key occurs once");
    boolValue(kept);
    bundle->pathForResource(bundle->infoString(key), "png");
  }
}

/// False if a number in the format has more than four digits: such a field width would only exhaust memory.
bool hasSaneWidths(const std::string& format) {
  int digits = 0;
  for (const char c : format) {
    digits = c >= '0' && c <= '9' ? digits + 1 : 0;
    if (digits > 4) {
      return false;
    }
  }
  return true;
}

void formatWith(const std::string& format) {
  if (!hasSaneWidths(format)) {
    return;
  }
  stringWithFormat(format);
  stringWithFormat(format, 7, -1.5, "text", 'c');
  stringWithFormat(format, std::string("text"), 1UL << 63, 1e300, static_cast<const void*>(&format));
}

}  // namespace
}  // namespace nivlo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  nivlo::fuzz::readURL(text);
  nivlo::fuzz::readInfoPlist(text);
  nivlo::fuzz::formatWith(text);
  return 0;
}
