#include "linux/codes/pace/ScenePace.hpp"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "linux/codes/pace/SceneChange.hpp"

namespace nivlo {

namespace {

using std::chrono::milliseconds;

// A still scene gets a quarter of the looks, normally five in two seconds. Timers are late.
constexpr int kStillSlowdown = 4;
constexpr milliseconds kLateness{10};
// About two rounds of a reader's strategies, because a weak 1-D code counts only once it has been read twice.
constexpr int kLooksAtNewScene = 20;

class PacedReader : public CodeReader {
 public:
  explicit PacedReader(std::unique_ptr<CodeReader> reader) : reader_(std::move(reader)) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override {
    now_ = frame.captureTime;
    if (change_.differs(frame)) {
      looksLeft_ = kLooksAtNewScene;
    }
    if (looksLeft_ == 0 && now_ < nextLook_) {
      return {};
    }
    change_.remember();
    nextLook_ = now_ + kStillSlowdown * reader_->lookInterval() - kLateness;
    auto codes = reader_->look(frame);
    looksLeft_ = codes.empty() ? std::max(0, looksLeft_ - 1) : kLooksAtNewScene;
    return codes;
  }

  bool mayLook() const override { return reader_->mayLook(); }
  milliseconds lookInterval() const override {
    const auto interval = reader_->lookInterval();
    return looksLeft_ > 0 ? interval : std::min(interval, std::chrono::ceil<milliseconds>(nextLook_ - now_));
  }

 private:
  std::unique_ptr<CodeReader> reader_;
  SceneChange change_;
  int looksLeft_ = 0;
  std::chrono::steady_clock::time_point now_;
  std::chrono::steady_clock::time_point nextLook_;
};

class PacedReaderDriver : public CodeReaderDriver {
 public:
  explicit PacedReaderDriver(std::unique_ptr<CodeReaderDriver> readers) : readers_(std::move(readers)) {}

  std::vector<std::string> availableTypes() const override { return readers_->availableTypes(); }
  bool canRead() const override { return readers_->canRead(); }
  std::unique_ptr<CodeReader> makeReader() override {
    auto reader = readers_->makeReader();
    return reader ? std::make_unique<PacedReader>(std::move(reader)) : nullptr;
  }

 private:
  std::unique_ptr<CodeReaderDriver> readers_;
};

}  // namespace

std::unique_ptr<CodeReaderDriver> pacedByScene(std::unique_ptr<CodeReaderDriver> readers) {
  return std::make_unique<PacedReaderDriver>(std::move(readers));
}

}  // namespace nivlo
