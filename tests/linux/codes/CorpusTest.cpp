#include <algorithm>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "linux/camera/ImageFile.hpp"
#include "linux/codes/ZXingCodeReader.hpp"
#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::test {

namespace {

struct Tally {
  int read = 0;
  int misread = 0;
};

/// Of each type, evenly chosen: enough to notice a change, few enough to run under a sanitizer.
constexpr std::size_t kPhotosOfAType = 12;
// What one second of looks reads of them, and in how many pictures it reads anything else. Only ever to be
// improved.
const std::map<std::string, Tally> kExpected = {
    {"-", {0, 0}},
    {"com.intermec.Code93", {9, 0}},
    // One photo shows another book's code than its expected text is of.
    {"org.gs1.EAN-13", {11, 1}},
    {"org.gs1.EAN-8", {12, 0}},
    {"org.gs1.UPC-E", {11, 0}},
    {"org.iso.Aztec", {9, 0}},
    {"org.iso.Code128", {12, 0}},
    {"org.iso.Code39", {12, 0}},
    {"org.iso.PDF417", {12, 0}},
    {"org.iso.QRCode", {11, 0}},
};

std::map<std::string, std::vector<Photo>> chosenPhotos() {
  std::map<std::string, std::vector<Photo>> all;
  for (Photo& photo : photosIn(NIVLO_CORPUS_DIR)) all[photo.type].push_back(std::move(photo));
  for (auto& [type, photos] : all) {
    const std::size_t count = std::min(kPhotosOfAType, photos.size());
    std::vector<Photo> chosen;
    for (std::size_t i = 0; i < count; ++i) chosen.push_back(photos[i * photos.size() / count]);
    photos = std::move(chosen);
  }
  return all;
}

Tally lookedAt(const Photo& photo) {
  const ImageLoad image = loadImageFile(photo.path);
  EXPECT_TRUE(image.frame) << photo.path << ": " << image.error;
  if (!image.frame) return {};
  const auto reader = makeZXingCodeReaderDriver()->makeReader();
  VideoFrame frame = *image.frame;
  Tally tally;
  for (int look = 0; look < 10; ++look, frame.captureTime += std::chrono::milliseconds(100)) {
    for (const DecodedCode& code : reader->look(frame))
      (isRight(code, photo) ? tally.read : tally.misread) = 1;
  }
  return tally;
}

TEST(Corpus, ReadsNoFewerPhotosAndMisreadsNoMoreThanBefore) {
  const auto photos = chosenPhotos();
  if (photos.empty()) GTEST_SKIP() << "no photos at " NIVLO_CORPUS_DIR;
  for (const auto& [type, expected] : kExpected) {
    Tally tally;
    for (const Photo& photo : photos.at(type)) {
      const Tally one = lookedAt(photo);
      tally.read += one.read;
      tally.misread += one.misread;
    }
    EXPECT_GE(tally.read, expected.read) << type;
    EXPECT_LE(tally.misread, expected.misread) << type;
    if (tally.read > expected.read || tally.misread < expected.misread)
      std::cout << type << " is better than expected: " << tally.read << " read, " << tally.misread
                << " misread\n";
  }
}

}  // namespace

}  // namespace nivlo::test
