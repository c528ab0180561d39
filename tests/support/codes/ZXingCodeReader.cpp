#include "tests/support/codes/ZXingCodeReader.hpp"

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "linux/codes/PictureReader.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

class ZXingCodeReader : public CodeReader {
 public:
  std::vector<DecodedCode> look(const VideoFrame& frame) override {
    try {
      const auto luma = lumaOf(frame, luma_);
      return luma ? reader_.read(*luma, frame.captureTime) : std::vector<DecodedCode>();
    } catch (const std::exception& error) {
      if (!troubleReported_) {
        NSLog("Code reader: could not read a picture of %d x %d (%@). Later pictures are still read.",
              frame.width, frame.height, std::string(error.what()));
      }
      troubleReported_ = true;
      return {};
    }
  }

  bool mayLook() const override { return true; }

 private:
  PictureReader reader_;
  LumaBuffer luma_;
  bool troubleReported_ = false;
};

class ZXingCodeReaderDriver : public CodeReaderDriver {
 public:
  std::vector<std::string> availableTypes() const override {
    return {kMachineReadableCodeTypes.begin(), kMachineReadableCodeTypes.end()};
  }
  bool canRead() const override { return true; }
  std::unique_ptr<CodeReader> makeReader() override { return std::make_unique<ZXingCodeReader>(); }
};

}  // namespace

std::unique_ptr<CodeReaderDriver> makeZXingCodeReaderDriver() {
  return std::make_unique<ZXingCodeReaderDriver>();
}

}  // namespace nivlo
