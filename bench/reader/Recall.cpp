#include "bench/reader/Recall.hpp"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

#include <fmt/format.h>

#include "linux/camera/ImageFile.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"
#include "platform/drivers/VideoFrame.hpp"
#include "tests/support/ChildProcess.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/codes/ZXingCodeReader.hpp"

namespace nivlo::bench {

namespace {

using std::chrono::milliseconds;
constexpr int kLooksInASecond = 10;
constexpr milliseconds kToolTimeout{20000};

void look(const VideoFrame& still, const test::Photo& photo, Recall& recall) {
  const auto reader = makeZXingCodeReaderDriver()->makeReader();
  VideoFrame frame = still;
  bool read = false;
  bool misread = false;
  for (int look = 0; look < kLooksInASecond; ++look, frame.captureTime += milliseconds(100)) {
    for (const DecodedCode& code : reader->look(frame)) {
      (isRight(code, photo) ? read : misread) = true;
    }
    if (look == 0) {
      recall.readAtOnce += read;
    }
  }
  recall.readInASecond += read;
  recall.misread += misread;
}

/// Writes the frame as PNG for the tools. `index` tells the files of one run apart.
std::filesystem::path asPNG(const VideoFrame& frame, const std::filesystem::path& directory,
                            std::size_t index) {
  const int bytes = frame.format == PixelFormat::RGB ? 3 : 4;
  std::vector<std::uint8_t> bgrx(4ull * frame.width * frame.height);
  for (int y = 0; y < frame.height; ++y) {
    for (int x = 0; x < frame.width; ++x) {
      const std::uint8_t* rgb =
          frame.planes[0].data + static_cast<std::ptrdiff_t>(y) * frame.planes[0].stride + x * bytes;
      std::uint8_t* out = &bgrx[4 * (static_cast<std::size_t>(y) * frame.width + x)];
      for (int channel = 0; channel < 3; ++channel) {
        out[2 - channel] = rgb[channel];
      }
    }
  }
  std::filesystem::path path = directory / fmt::format("{}.png", index);
  if (const std::string error = writePNG(path, bgrx.data(), frame.width, frame.height, 4 * frame.width);
      !error.empty()) {
    throw std::runtime_error(error);
  }
  return path;
}

/// Returns whether the output holds the photo's text in any of the forms in which the tools write it. UPC-A
/// and UPC-E have several.
bool holdsText(const std::string& output, const test::Photo& photo) {
  if (photo.type == "-" || photo.text.empty()) {
    return false;
  }
  if (output.find(photo.text) != std::string::npos) {
    return true;
  }
  const bool hasDigits = photo.text.size() == 13 && photo.text[0] == '0';
  if (photo.type == "org.gs1.EAN-13") {
    return hasDigits && output.find(photo.text.substr(1)) != std::string::npos;
  }
  if (photo.type != "org.gs1.UPC-E") {
    return false;
  }
  std::string words = output;
  std::replace_if(
      words.begin(), words.end(), [](char c) { return c < '0' || c > '9'; }, ' ');
  std::istringstream stream(words);
  for (std::string word; stream >> word;) {
    if (hasDigits &&
        (word == photo.text.substr(1) || (word.size() == 8 && test::expandedUPCE(word) == photo.text))) {
      return true;
    }
  }
  return false;
}

struct ToolResult {
  bool read = false;
  bool crashed = false;
};

ToolResult run(std::vector<std::string> command, const test::Photo& photo) {
  test::ChildProcess tool(std::move(command));
  const std::optional<int> status = tool.waitForExit(kToolTimeout);
  return {holdsText(tool.standardOutput(), photo), !status || *status >= 128};
}

}  // namespace

std::map<std::string, Recall> measureRecall(const std::vector<test::Photo>& photos) {
  std::map<std::string, Recall> recalls;
  std::mutex mutex;
  std::atomic<std::size_t> next{0};
  const test::TemporaryDirectory directory;
  const auto work = [&] {
    for (std::size_t i = next++; i < photos.size(); i = next++) {
      const test::Photo& photo = photos[i];
      const ImageLoad image = loadImageFile(photo.path);
      if (!image.frame) {
        std::fprintf(stderr, "%s: %s\n", photo.path.c_str(), image.error.c_str());
        continue;
      }
      Recall one;
      look(*image.frame, photo, one);
      const std::string png = asPNG(*image.frame, directory.path(), i);
      const ToolResult zxing = run({"ZXingReader", png}, photo);
      const ToolResult zbar = run({"zbarimg", "--raw", "-q", png}, photo);
      std::filesystem::remove(png);
      const std::lock_guard lock(mutex);
      Recall& all = recalls[photo.type];
      all.photos += 1;
      all.readAtOnce += one.readAtOnce;
      all.readInASecond += one.readInASecond;
      all.misread += one.misread;
      all.zxingReader += zxing.read && !zxing.crashed;
      all.zxingReaderCrashes += zxing.crashed;
      all.zbarimg += zbar.read && !zbar.crashed;
      all.zbarimgCrashes += zbar.crashed;
    }
  };
  std::vector<std::jthread> workers;
  for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i) {
    workers.emplace_back(work);
  }
  workers.clear();
  return recalls;
}

}  // namespace nivlo::bench
