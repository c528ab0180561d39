// Prints what the code reader reads of a corpus of photos, and what its looks cost.
#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "bench/reader/LookCost.hpp"
#include "bench/reader/Recall.hpp"
#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::bench {

namespace {

void printRecall(const std::vector<test::Photo>& photos) {
  fmt::print("{:<20} {:>6} {:>9} {:>9} {:>9} {:>12} {:>8} {:>9} {:>8}\n", "photos of", "count", "1 look",
             "10 looks", "misread", "ZXingReader", "crashes", "zbarimg", "crashes");
  const auto row = [](const std::string& name, const Recall& recall) {
    fmt::print("{:<20} {:>6} {:>9} {:>9} {:>9} {:>12} {:>8} {:>9} {:>8}\n", name, recall.photos,
               recall.readAtOnce, recall.readInASecond, recall.misread, recall.zxingReader,
               recall.zxingReaderCrashes, recall.zbarimg, recall.zbarimgCrashes);
  };
  Recall all;
  for (const auto& [type, recall] : measureRecall(photos)) {
    row(type == "-" ? "no code" : type, recall);
    if (type == "-") continue;
    all.photos += recall.photos;
    all.readAtOnce += recall.readAtOnce;
    all.readInASecond += recall.readInASecond;
    all.misread += recall.misread;
    all.zxingReader += recall.zxingReader;
    all.zxingReaderCrashes += recall.zxingReaderCrashes;
    all.zbarimg += recall.zbarimg;
    all.zbarimgCrashes += recall.zbarimgCrashes;
  }
  row("all with a code", all);
}

double quantile(std::vector<double> values, double part) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

double mean(const std::vector<double>& values) {
  return values.empty()
             ? 0
             : std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

void printCost(const char* what, const std::vector<test::Photo>& photos) {
  for (const auto& [width, height] : {std::pair{640, 480}, std::pair{1280, 720}, std::pair{1920, 1080}}) {
    const LookCost cost = measureLookCost(photos, width, height);
    const auto row = [&](const char* name, const std::vector<double>& values) {
      fmt::print("{:<10} {:>4}x{:<5} {:<14} {:>6} {:>8.2f} {:>8.2f} {:>8.2f}\n", what, width, height, name,
                 values.size(), mean(values), quantile(values, 0.5), quantile(values, 0.95));
    };
    row("look", cost.looks);
    row("library call", cost.libraryCalls);
    if (cost.libraryCrashes > 0)
      fmt::print("{:<27}{} library calls ended their process\n", "", cost.libraryCrashes);
  }
}

/// Every `step`th photo, with a code or without.
std::vector<test::Photo> chosen(const std::vector<test::Photo>& photos, bool withCode, std::size_t step) {
  std::vector<test::Photo> result;
  std::size_t seen = 0;
  for (const test::Photo& photo : photos) {
    if ((photo.type != "-") == withCode && seen++ % step == 0) result.push_back(photo);
  }
  return result;
}

}  // namespace

}  // namespace nivlo::bench

int main(int count, char** arguments) {
  const auto photos = count == 2 ? nivlo::test::photosIn(arguments[1]) : std::vector<nivlo::test::Photo>();
  if (photos.empty()) {
    std::fputs(
        "usage: nivlo-reader-bench CORPUS\nCORPUS is a folder with manifest.tsv and the photos it lists.\n",
        stderr);
    return 2;
  }
  nivlo::bench::printRecall(photos);
  fmt::print("\n{:<10} {:<10} {:<14} {:>6} {:>8} {:>8} {:>8}\n", "pictures", "size", "CPU ms of a", "count",
             "mean", "median", "p95");
  nivlo::bench::printCost("no code", nivlo::bench::chosen(photos, false, 2));
  nivlo::bench::printCost("with code", nivlo::bench::chosen(photos, true, 8));
  return 0;
}
