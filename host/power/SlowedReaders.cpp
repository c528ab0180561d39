#include "host/power/SlowedReaders.hpp"

#include <utility>

namespace nivlo {

namespace {

using Pace = std::shared_ptr<const FramePace>;

class SlowedReader : public CodeReader {
 public:
  SlowedReader(std::unique_ptr<CodeReader> reader, Pace pace)
      : reader_(std::move(reader)), pace_(std::move(pace)) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override { return reader_->look(frame); }
  std::chrono::milliseconds lookInterval() const override {
    return reader_->lookInterval() * (pace_->isHalved() ? 2 : 1);
  }

 private:
  std::unique_ptr<CodeReader> reader_;
  Pace pace_;
};

class SlowedReaders : public CodeReaderDriver {
 public:
  SlowedReaders(std::unique_ptr<CodeReaderDriver> readers, Pace pace)
      : readers_(std::move(readers)), pace_(std::move(pace)) {}

  std::vector<std::string> availableTypes() const override { return readers_->availableTypes(); }
  bool canRead() const override { return readers_->canRead(); }
  std::unique_ptr<CodeReader> makeReader() override {
    auto reader = readers_->makeReader();
    return reader ? std::make_unique<SlowedReader>(std::move(reader), pace_) : nullptr;
  }

 private:
  std::unique_ptr<CodeReaderDriver> readers_;
  Pace pace_;
};

}  // namespace

std::unique_ptr<CodeReaderDriver> slowed(std::unique_ptr<CodeReaderDriver> readers, Pace pace) {
  return std::make_unique<SlowedReaders>(std::move(readers), std::move(pace));
}

}  // namespace nivlo
