// Prints how much of a corpus of photos the code reader reads, and what its looks cost.
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "bench/reader/IdleCost.hpp"
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
    if (type == "-") {
      continue;
    }
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
  if (values.empty()) {
    return 0;
  }
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
    if (cost.libraryCrashes > 0) {
      fmt::print("{:<27}{} library calls crashed their process\n", "", cost.libraryCrashes);
    }
  }
}

void printIdleCost(const std::vector<test::Photo>& scenes) {
  fmt::print("\n{:<36} {:>8} {:>8} {:>8}\n", "still scenes, % of one core", "feeding", "reading", "in all");
  const auto costs = measureIdleCost(scenes);
  IdleCost sum;
  for (std::size_t i = 0; i < costs.size(); ++i) {
    const auto& [feeding, reading] = costs[i];
    fmt::print("{:<36} {:>8.2f} {:>8.2f} {:>8.2f}\n", scenes[i].path.filename().string(), 100 * feeding,
               100 * reading, 100 * (feeding + reading));
    sum.feeding += feeding;
    sum.reading += reading;
  }
  const double percent = 100.0 / static_cast<double>(costs.size());
  fmt::print("{:<36} {:>8.2f} {:>8.2f} {:>8.2f}\n", "mean", percent * sum.feeding, percent * sum.reading,
             percent * (sum.feeding + sum.reading));
}

/// Returns every `step`th of the photos with a code, or of those without one.
std::vector<test::Photo> chosen(const std::vector<test::Photo>& photos, bool withCode, std::size_t step) {
  std::vector<test::Photo> result;
  std::size_t seen = 0;
  for (const test::Photo& photo : photos) {
    if ((photo.type != "-") == withCode && seen++ % step == 0) {
      result.push_back(photo);
    }
  }
  return result;
}

void printCosts(const std::vector<test::Photo>& photos) {
  fmt::print("\n{:<10} {:<10} {:<14} {:>6} {:>8} {:>8} {:>8}\n", "pictures", "size", "CPU ms of a", "count",
             "mean", "median", "p95");
  printCost("no code", chosen(photos, false, 2));
  printCost("with code", chosen(photos, true, 8));
}

int run(const std::vector<std::string>& arguments) {
  const auto photos = arguments.empty() ? std::vector<test::Photo>() : test::photosIn(arguments.front());
  if (photos.empty()) {
    std::fputs(
        "usage: nivlo-reader-bench CORPUS [recall|cost|idle ...]\n"
        "CORPUS is a folder with manifest.tsv and the photos that it lists. Prints all three tables by "
        "default.\n",
        stderr);
    return 2;
  }
  const auto wanted = [&](const char* table) {
    return arguments.size() == 1 ||
           std::find(arguments.begin() + 1, arguments.end(), table) != arguments.end();
  };
  if (wanted("recall")) {
    printRecall(photos);
  }
  if (wanted("cost")) {
    printCosts(photos);
  }
  if (wanted("idle")) {
    printIdleCost(chosen(photos, false, 13));
  }
  return 0;
}

}  // namespace

}  // namespace nivlo::bench

int main(int count, char** arguments) { return nivlo::bench::run({arguments + 1, arguments + count}); }
