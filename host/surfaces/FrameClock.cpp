#include "host/surfaces/FrameClock.hpp"

#include <atomic>
#include <utility>

#include "platform/AVFoundation/AVCaptureVideoPreviewLayer.hpp"
#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

struct FrameClock::State : std::enable_shared_from_this<State> {
  std::function<void()> onFrame;  // main thread
  std::atomic<bool> called{false};

  void frameCame() {
    if (called.exchange(true)) {
      return;
    }
    dispatch_async(dispatch_get_main_queue(), [self = shared_from_this()] {
      self->called = false;
      if (self->onFrame) {
        self->onFrame();
      }
    });
  }

  void watch(const std::shared_ptr<CALayer>& layer) {
    if (const auto preview = std::dynamic_pointer_cast<AVCaptureVideoPreviewLayer>(layer)) {
      preview->setFrameHandler([self = shared_from_this()] { self->frameCame(); });
    }
    for (const auto& sublayer : layer->sublayers()) {
      watch(sublayer);
    }
  }
};

FrameClock::FrameClock(const UIView& view, std::function<void()> onFrame)
    : state_(std::make_shared<State>()) {
  state_->onFrame = std::move(onFrame);
  state_->watch(view.layer());
}

FrameClock::~FrameClock() { state_->onFrame = nullptr; }

}  // namespace nivlo
