// Cameras that deliver grey pictures and record being opened and closed.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Returns a mid-grey frame with the planes of I420, captured now. Width and height are in pixels and even.
inline VideoFramePtr greyPicture(int width, int height) {
  const auto pixels = std::make_shared<std::vector<std::uint8_t>>(width * height * 3 / 2, 128);
  auto frame = std::make_shared<VideoFrame>();
  frame->width = width;
  frame->height = height;
  frame->planes = {Plane{pixels->data(), width}, Plane{pixels->data() + width * height, width / 2},
                   Plane{pixels->data() + width * height * 5 / 4, width / 2}};
  frame->captureTime = std::chrono::steady_clock::now();
  frame->storage = pixels;
  return frame;
}

/// For use on the main thread, except `frames`, which any thread may read.
class FakeCameras : public CameraDriver {
 public:
  std::vector<CameraInfo> infos{{"back", "Back camera", AVCaptureDevicePosition::Back},
                                {"front", "Front camera", AVCaptureDevicePosition::Front}};
  std::set<std::string> refused;    ///< unique IDs of cameras that open() refuses
  std::set<std::string> silent;     ///< unique IDs of cameras that open but deliver no frames
  std::vector<std::string> events;  ///< "open ID" and "close ID", in order
  std::function<void()> onOpen;     ///< called by each open() before it does anything else
  std::atomic<int> frames{0};       ///< delivered so far by all cameras

  std::vector<CameraInfo> cameras() override { return infos; }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    if (onOpen) {
      onOpen();
    }
    if (refused.contains(uniqueID)) {
      return nullptr;
    }
    events.push_back("open " + uniqueID);
    return std::make_unique<Stream>(*this, uniqueID, std::move(onFrame));
  }

 private:
  class Stream : public CameraStream {
   public:
    Stream(FakeCameras& cameras, std::string name, CameraFrameHandler onFrame)
        : cameras_(cameras), name_(std::move(name)) {
      if (!cameras.silent.contains(name_)) {
        thread_ = std::jthread(
            [this, onFrame = std::move(onFrame)](const std::stop_token& stop) { deliver(stop, onFrame); });
      }
    }
    ~Stream() override {
      thread_ = {};
      cameras_.events.push_back("close " + name_);
    }

   private:
    void deliver(const std::stop_token& stop, const CameraFrameHandler& onFrame) {
      const auto picture = greyPicture(64, 48);
      while (!stop.stop_requested()) {
        onFrame(picture);
        ++cameras_.frames;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
      }
    }

    FakeCameras& cameras_;
    std::string name_;
    std::jthread thread_;
  };
};

}  // namespace nivlo
