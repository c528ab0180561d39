#include "linux/camera/demo/DemoCameras.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "linux/camera/FramePool.hpp"
#include "linux/camera/PacedStream.hpp"
#include "linux/camera/demo/BackScene.hpp"
#include "linux/camera/demo/Canvas.hpp"
#include "linux/camera/demo/FrontScene.hpp"

namespace nivlo {
namespace {

using Clock = PacedStream::Clock;

constexpr std::chrono::milliseconds kInterval{50};
constexpr int kStride = kSceneWidth * 4;
constexpr std::size_t kFrameBytes = static_cast<std::size_t>(kStride) * kSceneHeight;

/// One of the two cameras. Its scene takes too long to make on the main thread, so the first frame makes it.
class DemoCamera {
 public:
  DemoCamera(CameraInfo info, std::function<std::unique_ptr<DemoScene>()> makeScene)
      : info_(std::move(info)), makeScene_(std::move(makeScene)) {}

  const CameraInfo& info() const { return info_; }

  VideoFramePtr frameAt(Clock::time_point now) {
    std::call_once(once_, [this] { scene_ = makeScene_(); });
    auto pixels = pool_.borrow(kFrameBytes);
    draw(pixels.get(), std::chrono::duration<double>(now - begin_).count());
    auto frame = std::make_shared<VideoFrame>();
    frame->format = PixelFormat::BGRx;
    frame->width = kSceneWidth;
    frame->height = kSceneHeight;
    frame->planes[0] = {pixels.get(), kStride};
    frame->captureTime = now;
    frame->storage = std::move(pixels);
    return frame;
  }

 private:
  void draw(std::uint8_t* pixels, double seconds) const {
    const Layer surface(
        cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_RGB24, kSceneWidth, kSceneHeight, kStride));
    scene_->draw(drawOn(surface).get(), seconds);
    cairo_surface_finish(surface.get());
  }

  const CameraInfo info_;
  const std::function<std::unique_ptr<DemoScene>()> makeScene_;
  const Clock::time_point begin_ = Clock::now();
  FramePool pool_;
  std::once_flag once_;
  std::unique_ptr<DemoScene> scene_;
};

class DemoCameras final : public CameraDriver {
 public:
  std::vector<CameraInfo> cameras() override { return {back_->info(), front_->info()}; }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    for (const auto& camera : {back_, front_}) {
      if (camera->info().uniqueID != uniqueID) {
        continue;
      }
      return std::make_unique<PacedStream>(
          kInterval, [camera](Clock::time_point now) { return camera->frameAt(now); }, std::move(onFrame));
    }
    return nullptr;
  }

 private:
  using Position = AVCaptureDevicePosition;

  // Shared with their streams, which may outlive the driver.
  const std::shared_ptr<DemoCamera> back_ =
      std::make_shared<DemoCamera>(CameraInfo{"demo:back", "Demo camera, back", Position::Back},
                                   [] { return std::make_unique<BackScene>(); });
  const std::shared_ptr<DemoCamera> front_ =
      std::make_shared<DemoCamera>(CameraInfo{"demo:front", "Demo camera, front", Position::Front},
                                   [] { return std::make_unique<FrontScene>(); });
};

}  // namespace

std::unique_ptr<CameraDriver> makeDemoCameras() { return std::make_unique<DemoCameras>(); }

}  // namespace nivlo
