#include "linux/camera/files/FileCameras.hpp"

#include <chrono>
#include <system_error>
#include <utility>

#include "linux/camera/ImageFile.hpp"
#include "linux/camera/PacedStream.hpp"
#include "linux/camera/files/FilmStream.hpp"
#include "linux/camera/files/PictureFrame.hpp"

namespace nivlo {
namespace {

constexpr std::chrono::milliseconds kPictureInterval{100};

std::unique_ptr<CameraStream> openPicture(const VideoFramePtr& picture, CameraFrameHandler onFrame) {
  const auto frameAt = [picture](PacedStream::Clock::time_point now) {
    auto frame = std::make_shared<VideoFrame>(*picture);
    frame->captureTime = now;
    return frame;
  };
  return std::make_unique<PacedStream>(kPictureInterval, frameAt, std::move(onFrame));
}

class FileCamera final : public CameraDriver {
 public:
  /// A null `picture` means that the file is a film.
  FileCamera(std::filesystem::path path, AVCaptureDevicePosition position, VideoFramePtr picture)
      : path_(std::move(path)),
        info_{"file:" + path_.string(), path_.filename().string(), position},
        picture_(std::move(picture)) {}

  std::vector<CameraInfo> cameras() override { return {info_}; }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    if (uniqueID != info_.uniqueID) {
      return nullptr;
    }
    if (picture_) {
      return openPicture(picture_, std::move(onFrame));
    }
    return std::make_unique<FilmStream>(path_, std::move(onFrame));
  }

 private:
  const std::filesystem::path path_;
  const CameraInfo info_;
  const VideoFramePtr picture_;
};

bool isNonEmptyFile(const std::filesystem::path& path) {
  std::error_code problem;
  return std::filesystem::is_regular_file(path, problem) && std::filesystem::file_size(path, problem) > 0;
}

}  // namespace

std::unique_ptr<CameraDriver> makeFileCamera(const std::filesystem::path& path,
                                             AVCaptureDevicePosition position, std::string* error) {
  std::string problem;
  if (isNonEmptyFile(path) && !isImageFile(path)) {
    problem = findFilmProblem(path);
    if (problem.empty()) {
      return std::make_unique<FileCamera>(path, position, nullptr);
    }
  } else {
    const auto image = loadImageFile(path);
    if (image.frame) {
      return std::make_unique<FileCamera>(path, position, asCameraFrame(*image.frame));
    }
    problem = image.error;
  }
  if (error) {
    *error = problem;
  }
  return nullptr;
}

}  // namespace nivlo
