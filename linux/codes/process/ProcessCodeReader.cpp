#include "linux/codes/process/ProcessCodeReader.hpp"

#include <exception>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/process/ReaderProcess.hpp"
#include "linux/codes/process/SharedPicture.hpp"
#include "linux/codes/protocol/Messages.hpp"
#include "linux/program/ProgramFile.hpp"
#include "linux/timing/Backoff.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

// A failure after this long without one starts the delays anew.
constexpr std::chrono::minutes kForgiveness{1};

class ProcessCodeReader : public CodeReader {
 public:
  ProcessCodeReader(std::filesystem::path program, std::chrono::milliseconds deadline)
      : program_(std::move(program)), deadline_(deadline) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override {
    if (Clock::now() < restartAt_) {
      return {};
    }
    const auto luma = lumaOf(frame, luma_);
    if (!luma || !isOfReadableSize(*luma)) {
      return {};
    }
    try {
      return look(*luma, frame.captureTime);
    } catch (const std::exception& failure) {
      process_.reset();
      if (delayRestart()) {
        NSLog("codes: the reader %@. It is started again; a picture that ends it again is not read.",
              std::string(failure.what()));
      }
      return {};
    }
  }

 private:
  using Clock = std::chrono::steady_clock;

  /// Returns whether this is the first failure in a while.
  bool delayRestart() {
    const auto now = Clock::now();
    const bool isFirst = !lastFailure_ || now - *lastFailure_ > kForgiveness;
    if (isFirst) {
      restartDelay_.reset();
    }
    lastFailure_ = now;
    restartAt_ = now + restartDelay_.next();
    return isFirst;
  }

  std::vector<DecodedCode> look(const LumaPicture& luma, std::chrono::steady_clock::time_point captureTime) {
    if (!picture_) {
      picture_.emplace();
    }
    if (!process_) {
      process_ = std::make_unique<ReaderProcess>(program_, picture_->descriptor());
    }
    picture_->write(luma);
    return process_->look(
        {.captureTime = captureTime.time_since_epoch().count(), .width = luma.width, .height = luma.height},
        deadline_);
  }

  bool isOfReadableSize(const LumaPicture& luma) {
    const LookRequest request{.width = luma.width, .height = luma.height};
    if (request.isSane()) {
      return true;
    }
    if (!std::exchange(isSizeReported_, true)) {
      NSLog("codes: a picture of %d x %d is too large to be read; a smaller copy of it can be.", luma.width,
            luma.height);
    }
    return false;
  }

  std::filesystem::path program_;
  std::chrono::milliseconds deadline_;
  LumaBuffer luma_;
  std::optional<SharedPicture> picture_;
  std::unique_ptr<ReaderProcess> process_;
  Backoff restartDelay_{std::chrono::milliseconds(100), std::chrono::seconds(5)};
  std::optional<Clock::time_point> lastFailure_;
  Clock::time_point restartAt_;
  bool isSizeReported_ = false;
};

class ProcessCodeReaderDriver : public CodeReaderDriver {
 public:
  ProcessCodeReaderDriver(std::filesystem::path program, std::chrono::milliseconds deadline)
      : program_(std::move(program)), deadline_(deadline) {}

  std::vector<std::string> availableTypes() const override {
    return {kMachineReadableCodeTypes.begin(), kMachineReadableCodeTypes.end()};
  }

  std::unique_ptr<CodeReader> makeReader() override {
    std::error_code error;
    if (std::filesystem::exists(program_, error)) {
      return std::make_unique<ProcessCodeReader>(program_, deadline_);
    }
    if (!std::exchange(isAbsenceReported_, true)) {
      NSLog("codes: none are read, because %@ is missing. Installing Nivlo again brings it back.",
            program_.string());
    }
    return nullptr;
  }

 private:
  std::filesystem::path program_;
  std::chrono::milliseconds deadline_;
  bool isAbsenceReported_ = false;
};

}  // namespace

std::filesystem::path readerProgram() { return programFile("nivlo-reader", "../libexec/nivlo/nivlo-reader"); }

std::unique_ptr<CodeReaderDriver> makeProcessCodeReaderDriver(std::chrono::milliseconds deadline,
                                                              std::filesystem::path program) {
  return std::make_unique<ProcessCodeReaderDriver>(std::move(program), deadline);
}

}  // namespace nivlo
