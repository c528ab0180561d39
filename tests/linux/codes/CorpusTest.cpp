#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "linux/camera/ImageFile.hpp"
#include "linux/codes/protocol/Sanitized.hpp"
#include "tests/linux/codes/Corpus.hpp"
#include "tests/support/codes/ZXingCodeReader.hpp"

namespace nivlo::test {

namespace {

/// Numbers of photos.
struct Tally {
  int missed = 0;
  int misread = 0;
};

// Enough to notice a change. Fewer under a sanitizer, where each takes ten times as long.
constexpr std::size_t kPhotosOfAType = kSanitized ? 4 : 12;
// Of twelve photos, how many may have their code missed by a second's looks, and how many may be misread.
// These numbers may only ever go down.
const std::map<std::string, Tally> kMaxAllowed = {
    {"-", {0, 0}},
    {"com.intermec.Code93", {0, 0}},
    // The expected text of one photo is that of another book.
    {"org.gs1.EAN-13", {1, 1}},
    {"org.gs1.EAN-8", {0, 0}},
    {"org.gs1.UPC-E", {1, 0}},
    {"org.iso.Aztec", {0, 0}},
    {"org.iso.Code128", {0, 0}},
    {"org.iso.Code39", {0, 0}},
    {"org.iso.PDF417", {0, 0}},
    {"org.iso.QRCode", {0, 0}},
};

/// Returns photos of each type, evenly chosen from the corpus.
std::map<std::string, std::vector<Photo>> chosenPhotos() {
  std::map<std::string, std::vector<Photo>> all;
  for (Photo& photo : photosIn(NIVLO_CORPUS_DIR)) {
    all[photo.type].push_back(std::move(photo));
  }
  for (auto& [type, photos] : all) {
    const std::size_t count = std::min(kPhotosOfAType, photos.size());
    std::vector<Photo> chosen;
    for (std::size_t i = 0; i < count; ++i) {
      chosen.push_back(photos[i * photos.size() / count]);
    }
    photos = std::move(chosen);
  }
  return all;
}

Tally tallyOf(const Photo& photo) {
  const ImageLoad image = loadImageFile(photo.path);
  EXPECT_TRUE(image.frame) << photo.path << ": " << image.error;
  if (!image.frame) {
    return {};
  }
  const auto reader = makeZXingCodeReaderDriver()->makeReader();
  VideoFrame frame = *image.frame;
  Tally tally{photo.type == "-" ? 0 : 1, 0};
  for (int look = 0; look < 10; ++look, frame.captureTime += std::chrono::milliseconds(100)) {
    for (const DecodedCode& code : reader->look(frame)) {
      if (isRight(code, photo)) {
        tally.missed = 0;
      } else {
        tally.misread = 1;
      }
    }
  }
  return tally;
}

TEST(Corpus, MissesAndMisreadsNoMorePhotosThanBefore) {
  const auto photos = chosenPhotos();
  if (photos.empty()) {
    GTEST_SKIP() << "no photos at " NIVLO_CORPUS_DIR;
  }
  for (const auto& [type, allowed] : kMaxAllowed) {
    Tally tally;
    for (const Photo& photo : photos.at(type)) {
      const Tally one = tallyOf(photo);
      tally.missed += one.missed;
      tally.misread += one.misread;
    }
    EXPECT_LE(tally.missed, allowed.missed) << type;
    EXPECT_LE(tally.misread, allowed.misread) << type;
    const bool isBetter = tally.missed < allowed.missed || tally.misread < allowed.misread;
    if (isBetter && !kSanitized) {
      std::cout << type << " does better than it must; lower its numbers: " << tally.missed << " missed, "
                << tally.misread << " misread\n";
    }
  }
}

}  // namespace

}  // namespace nivlo::test
