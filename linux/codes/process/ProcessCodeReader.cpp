#include "linux/codes/process/ProcessCodeReader.hpp"

#include <atomic>
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

// After this long without a failure, the next one is logged again and waits as briefly as the first.
constexpr std::chrono::minutes kForgiveness{1};

/// True if the latest look failed. Set on the threads that look.
using Failing = std::shared_ptr<std::atomic<bool>>;

class ProcessCodeReader : public CodeReader {
 public:
  ProcessCodeReader(std::filesystem::path program, std::chrono::milliseconds deadline, Failing failing)
      : program_(std::move(program)), deadline_(deadline), failing_(std::move(failing)) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override {
    if (Clock::now() < restartAt_) {
      return {};
    }
    const auto luma = lumaOf(frame, luma_);
    if (!luma || !hasReadableSize(*luma)) {
      return {};
    }
    try {
      auto codes = look(*luma, frame.captureTime);
      *failing_ = false;
      return codes;
    } catch (const std::exception& failure) {
      *failing_ = true;
      process_.reset();
      if (delayRestart()) {
        NSLog("codes: %@.", std::string(failure.what()));
      }
      return {};
    }
  }

  bool mayLook() const override { return true; }

 private:
  using Clock = std::chrono::steady_clock;

  /// Schedules the restart. Returns whether this is the first failure in a while, and so worth a log line.
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

  bool hasReadableSize(const LumaPicture& luma) {
    const LookRequest request{.width = luma.width, .height = luma.height};
    if (request.isValid()) {
      return true;
    }
    if (!std::exchange(isSizeReported_, true)) {
      NSLog(
          "codes: a picture of %d x %d pixels is too large to read; scale it down to %d megapixels or less.",
          luma.width, luma.height, kMaxPicturePixels / 1'000'000);
    }
    return false;
  }

  std::filesystem::path program_;
  std::chrono::milliseconds deadline_;
  Failing failing_;
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
      return std::make_unique<ProcessCodeReader>(program_, deadline_, failing_);
    }
    *failing_ = true;
    if (!std::exchange(isAbsenceReported_, true)) {
      NSLog("codes: no codes are read because %@ is missing. Reinstall Nivlo to restore it.",
            program_.string());
    }
    return nullptr;
  }

  bool canRead() const override { return !*failing_; }

 private:
  std::filesystem::path program_;
  std::chrono::milliseconds deadline_;
  Failing failing_ = std::make_shared<std::atomic<bool>>(false);
  bool isAbsenceReported_ = false;
};

}  // namespace

std::filesystem::path readerProgram() {
  return (programFolder() / installedHelpers() / "nivlo-reader").lexically_normal();
}

std::unique_ptr<CodeReaderDriver> makeProcessCodeReaderDriver(std::chrono::milliseconds deadline,
                                                              std::filesystem::path program) {
  return std::make_unique<ProcessCodeReaderDriver>(std::move(program), deadline);
}

}  // namespace nivlo
