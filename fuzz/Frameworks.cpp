// Texts that come from outside, through the frameworks' readers: links, a bundle's description, string
// formats.
#include "fuzz/Check.hpp"

#include <cstdint>
#include <string>

#include "platform/Foundation/NSBundle.hpp"
#include "platform/Foundation/NSString+Format.hpp"
#include "platform/Foundation/NSURL.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::fuzz {
namespace {

void readLink(const std::string& text) {
  const auto url = NSURL::URLWithString(text);
  if (!url) {
    return;
  }
  check(url->absoluteString() == text, "a link keeps its bytes");
  check(!url->scheme().empty(), "a link has a scheme");
  if (const auto path = url->filePath()) {
    check(path->is_absolute(), "a file link is absolute");
    check(NSURL::fileURLWithPath(*path).filePath() == path, "a path survives being a link");
  }
}

void readDescription(const std::string& text) {
  static const test::TemporaryDirectory folder;
  folder.write("Info.plist", text);
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(folder.path(), &error);
  check((bundle == nullptr) == !error.empty(), "no bundle without a cause");
  if (!bundle) {
    return;
  }
  for (const auto& [key, value] : bundle->infoDictionary().entries()) {
    const auto* kept = bundle->infoDictionary().objectForKey(key);
    check(kept == &value, "a key is there once");
    boolValue(kept);
    bundle->pathForResource(bundle->infoString(key), "png");
  }
}

/// Wider than four digits would only fill the memory.
bool isOfSaneWidth(const std::string& format) {
  int digits = 0;
  for (const char c : format) {
    digits = c >= '0' && c <= '9' ? digits + 1 : 0;
    if (digits > 4) {
      return false;
    }
  }
  return true;
}

void fillIn(const std::string& format) {
  if (!isOfSaneWidth(format)) {
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
  nivlo::fuzz::readLink(text);
  nivlo::fuzz::readDescription(text);
  nivlo::fuzz::fillIn(text);
  return 0;
}
