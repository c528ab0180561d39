#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "linux/camera/ImageFile.hpp"
#include "linux/codes/ZXingCodeReader.hpp"

namespace nivlo::test {

namespace {

struct Entry {
  std::string path;
  std::string type;
  std::string text;
};

struct Tally {
  int read = 0;
  int misread = 0;
};

/// Every eighth picture of each type: enough to notice a change, few enough to run under a sanitizer.
constexpr int kOneIn = 8;
// What one second of looks reads of them, and in how many pictures it reads anything else. Only ever to be
// improved.
const std::map<std::string, Tally> kExpected = {
    {"-", {0, 0}},
    {"com.intermec.Code93", {2, 0}},
    {"org.gs1.EAN-13", {14, 0}},
    {"org.gs1.EAN-8", {2, 0}},
    {"org.gs1.UPC-E", {5, 0}},
    {"org.iso.Aztec", {4, 0}},
    {"org.iso.Code128", {4, 0}},
    {"org.iso.Code39", {3, 0}},
    {"org.iso.PDF417", {8, 0}},
    {"org.iso.QRCode", {16, 0}},
};

std::string fromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  return bytes;
}

std::vector<Entry> corpus() {
  std::vector<Entry> entries;
  std::map<std::string, int> seen;
  std::ifstream manifest(NIVLO_CORPUS_DIR "/manifest.tsv");
  for (std::string line; std::getline(manifest, line);) {
    std::istringstream fields(line);
    Entry entry;
    std::string hex;
    std::getline(std::getline(std::getline(fields, entry.path, '\t'), entry.type, '\t'), hex, '\t');
    if (line.starts_with("#") || seen[entry.type]++ % kOneIn != 0) continue;
    entry.text = entry.type == "-" ? "" : fromHex(hex);
    entries.push_back(entry);
  }
  return entries;
}

/// The 13 digits that 8 digits of UPC-E stand for: some of the expectations are written so.
std::string expanded(const std::string& upce) {
  const std::string digits = upce.substr(1, 6);
  const char last = digits[5];
  std::string middle = digits.substr(0, 5) + "0000" + last;
  if (last <= '2') middle = digits.substr(0, 2) + last + "0000" + digits.substr(2, 3);
  if (last == '3') middle = digits.substr(0, 3) + "00000" + digits.substr(3, 2);
  if (last == '4') middle = digits.substr(0, 4) + "00000" + digits[4];
  return "0" + upce.substr(0, 1) + middle + upce[7];
}

/// Expectations of binary contents are bytes; as text they are read as ISO 8859-1.
std::string latin1ToUTF8(const std::string& bytes) {
  std::string text;
  for (const unsigned char byte : bytes) {
    if (byte >= 0x80) text += static_cast<char>(0xc0 | byte >> 6);
    text += static_cast<char>(byte >= 0x80 ? 0x80 | (byte & 0x3f) : byte);
  }
  return text;
}

bool isRight(const DecodedCode& code, const Entry& entry) {
  const bool sameType =
      code.type == entry.type || (code.type == "org.iso.Code39Mod43" && entry.type == "org.iso.Code39");
  if (!sameType) return false;
  if (code.type == "org.gs1.UPC-E" && entry.text.size() == 13) return expanded(code.text) == entry.text;
  return code.text == entry.text || code.text == latin1ToUTF8(entry.text);
}

TEST(Corpus, ReadsNoFewerPhotosAndMisreadsNoMoreThanBefore) {
  const std::vector<Entry> entries = corpus();
  if (entries.empty()) GTEST_SKIP() << "no photos at " NIVLO_CORPUS_DIR;
  const auto driver = makeZXingCodeReaderDriver();
  std::map<std::string, Tally> tallies;
  for (const Entry& entry : entries) {
    const ImageLoad image = loadImageFile(NIVLO_CORPUS_DIR "/" + entry.path);
    ASSERT_TRUE(image.frame) << entry.path << ": " << image.error;
    const auto reader = driver->makeReader();
    bool read = false;
    bool misread = false;
    for (int look = 0; look < 10; ++look) {
      for (const DecodedCode& code : reader->look(*image.frame))
        (isRight(code, entry) ? read : misread) = true;
    }
    tallies[entry.type].read += read;
    tallies[entry.type].misread += misread;
  }
  for (const auto& [type, expected] : kExpected) {
    EXPECT_GE(tallies[type].read, expected.read) << type;
    EXPECT_LE(tallies[type].misread, expected.misread) << type;
  }
}

}  // namespace

}  // namespace nivlo::test
