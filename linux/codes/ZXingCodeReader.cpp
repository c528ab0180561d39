#include "linux/codes/ZXingCodeReader.hpp"

#include <chrono>
#include <exception>
#include <iterator>
#include <utility>

#include "linux/codes/Confirmation.hpp"
#include "linux/codes/ReadingSchedule.hpp"
#include "linux/codes/SymbologyTypes.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

using std::chrono::steady_clock;

class ZXingCodeReader : public CodeReader {
 public:
  std::vector<DecodedCode> look(const VideoFrame& frame) override;

 private:
  std::vector<Reading> readings(const VideoFrame& frame);
  void complete(std::vector<Reading>& found, const LumaPicture& picture,
                steady_clock::time_point captureTime);

  ReadingSchedule schedule_ = makeReadingSchedule();
  std::size_t next_ = 0;
  Confirmation confirmation_;
  LumaBuffer luma_;
  bool troubleReported_ = false;
};

std::vector<DecodedCode> ZXingCodeReader::look(const VideoFrame& frame) {
  std::vector<DecodedCode> codes;
  try {
    for (Reading& reading : readings(frame)) {
      codes.push_back({std::move(reading.type),
                       std::move(reading.text),
                       {reading.outline.begin(), reading.outline.end()}});
    }
  } catch (const std::exception& error) {
    if (!troubleReported_) {
      NSLog("Code reader: a picture of %d x %d could not be read (%@). Later pictures are read all the same.",
            frame.width, frame.height, std::string(error.what()));
    }
    troubleReported_ = true;
    codes.clear();
  }
  return codes;
}

std::vector<Reading> ZXingCodeReader::readings(const VideoFrame& frame) {
  const auto luma = lumaOf(frame, luma_);
  if (!luma) return {};
  const std::size_t next = next_;
  next_ = (next + 1) % schedule_.strategies.size();
  std::vector<Reading> found = schedule_.strategies[next]->read(*luma);
  const bool incomplete = !found.empty() && next != schedule_.mostComplete;
  found = confirmation_.confirmed(withoutDuplicates(std::move(found)), {next, frame.captureTime});
  if (incomplete) complete(found, *luma, frame.captureTime);
  sortPointedAtLast(found, frame.width, frame.height);
  return found;
}

/// Which of the codes in view is pointed at shows only when all of them are known, so a look that finds one
/// looks for the others as well.
void ZXingCodeReader::complete(std::vector<Reading>& found, const LumaPicture& picture,
                               steady_clock::time_point captureTime) {
  std::vector<Reading> more = withoutDuplicates(schedule_.strategies[schedule_.mostComplete]->read(picture));
  more = confirmation_.confirmed(std::move(more), {schedule_.mostComplete, captureTime});
  found.insert(found.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
  found = withoutDuplicates(std::move(found));
}

class ZXingCodeReaderDriver : public CodeReaderDriver {
 public:
  std::vector<std::string> availableTypes() const override {
    return {symbology::kAll.begin(), symbology::kAll.end()};
  }
  std::unique_ptr<CodeReader> makeReader() override { return std::make_unique<ZXingCodeReader>(); }
};

}  // namespace

std::unique_ptr<CodeReaderDriver> makeZXingCodeReaderDriver() {
  return std::make_unique<ZXingCodeReaderDriver>();
}

}  // namespace nivlo
