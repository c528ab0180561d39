#include "linux/codes/process/ProcessCodeReader.hpp"

#include <exception>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/process/ReaderProcess.hpp"
#include "linux/codes/process/RestartPause.hpp"
#include "linux/codes/process/SharedPicture.hpp"
#include "linux/codes/protocol/Messages.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

class ProcessCodeReader : public CodeReader {
 public:
  ProcessCodeReader(std::filesystem::path program, std::chrono::milliseconds deadline)
      : program_(std::move(program)), deadline_(deadline) {}

  std::vector<DecodedCode> look(const VideoFrame& frame) override {
    if (!pause_.isOver(RestartPause::Clock::now())) return {};
    const auto luma = lumaOf(frame, luma_);
    if (!luma || !isOfReadableSize(*luma)) return {};
    try {
      return look(*luma, frame.captureTime);
    } catch (const std::exception& failure) {
      process_.reset();
      if (pause_.failed(RestartPause::Clock::now())) {
        NSLog("codes: the reader %@. It is started again; a picture that ends it again is not read.",
              std::string(failure.what()));
      }
      return {};
    }
  }

 private:
  std::vector<DecodedCode> look(const LumaPicture& luma, std::chrono::steady_clock::time_point captureTime) {
    if (!picture_) picture_.emplace();
    if (!process_) process_ = std::make_unique<ReaderProcess>(program_, picture_->descriptor());
    picture_->write(luma);
    return process_->look(
        {.captureTime = captureTime.time_since_epoch().count(), .width = luma.width, .height = luma.height},
        deadline_);
  }

  bool isOfReadableSize(const LumaPicture& luma) {
    const LookRequest request{.width = luma.width, .height = luma.height};
    if (request.isSane()) return true;
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
  RestartPause pause_;
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

std::filesystem::path readerProgram() {
  std::error_code error;
  const auto programs = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  auto beside = programs / "nivlo-reader";
  if (std::filesystem::exists(beside, error)) return beside;
  return (programs / "../libexec/nivlo/nivlo-reader").lexically_normal();
}

std::unique_ptr<CodeReaderDriver> makeProcessCodeReaderDriver(std::chrono::milliseconds deadline,
                                                              std::filesystem::path program) {
  return std::make_unique<ProcessCodeReaderDriver>(std::move(program), deadline);
}

}  // namespace nivlo
