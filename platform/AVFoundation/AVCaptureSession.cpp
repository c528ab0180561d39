#include "platform/AVFoundation/AVCaptureSession.hpp"

#include <algorithm>
#include <condition_variable>
#include <utility>

#include "platform/AVFoundation/AVCaptureMetadataOutput.hpp"
#include "platform/Foundation/Dispatch.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::seconds kLongestStart{2};

}  // namespace

/// Hands each frame to the consumers. Shared by the session and the camera's thread.
class AVCaptureSession::Feed {
 public:
  void add(std::weak_ptr<CaptureFrameConsumer> consumer) {
    const std::lock_guard lock(mutex_);
    consumers_.push_back(std::move(consumer));
  }

  void deliver(const CaptureFrame& frame) {
    std::vector<std::shared_ptr<CaptureFrameConsumer>> consumers;
    {
      const std::lock_guard lock(mutex_);
      std::erase_if(consumers_, [](const auto& consumer) { return consumer.expired(); });
      for (const auto& consumer : consumers_) {
        consumers.push_back(consumer.lock());
      }
    }
    for (const auto& consumer : consumers) {
      if (consumer) {
        consumer->consume(frame);
      }
    }
    const std::lock_guard lock(mutex_);
    frameCame_ = true;
    firstFrame_.notify_all();
  }

  void expectFirstFrame() {
    const std::lock_guard lock(mutex_);
    frameCame_ = false;
  }

  void waitForFirstFrame(std::chrono::milliseconds longest) {
    std::unique_lock lock(mutex_);
    firstFrame_.wait_for(lock, longest, [this] { return frameCame_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable firstFrame_;
  bool frameCame_ = false;
  std::vector<std::weak_ptr<CaptureFrameConsumer>> consumers_;
};

std::shared_ptr<AVCaptureSession> AVCaptureSession::init() {
  // While a frame is delivered, the camera's thread holds its consumers, and through a preview layer the
  // session. A camera must not be closed on its own thread, so the session is destroyed on the main one.
  return ownedByMainThread(std::unique_ptr<AVCaptureSession>(new AVCaptureSession));
}

AVCaptureSession::AVCaptureSession() : feed_(std::make_shared<Feed>()) {}

AVCaptureSession::~AVCaptureSession() { stopRunning(); }

bool AVCaptureSession::canAddInput(const std::shared_ptr<AVCaptureDeviceInput>& input) const {
  return input && inputs_.empty();
}

void AVCaptureSession::addInput(const std::shared_ptr<AVCaptureDeviceInput>& input) {
  if (!canAddInput(input)) {
    inputRefused_ = true;
    return;
  }
  beginConfiguration();
  inputs_.push_back(input);
  commitConfiguration();
}

void AVCaptureSession::removeInput(const std::shared_ptr<AVCaptureDeviceInput>& input) {
  beginConfiguration();
  std::erase(inputs_, input);
  commitConfiguration();
}

bool AVCaptureSession::canAddOutput(const std::shared_ptr<AVCaptureMetadataOutput>& output) const {
  return output && !output->session();
}

void AVCaptureSession::addOutput(const std::shared_ptr<AVCaptureMetadataOutput>& output) {
  if (!canAddOutput(output)) {
    return;
  }
  outputs_.push_back(output);
  output->setSession(shared_from_this());
  addConsumer(output);
  if (running_) {
    output->startReading();
  }
}

void AVCaptureSession::beginConfiguration() {
  if (configurationDepth_++ == 0) {
    inputsBeforeConfiguration_ = inputs_;
    inputRefused_ = false;
  }
}

void AVCaptureSession::commitConfiguration() {
  if (configurationDepth_ == 0 || --configurationDepth_ > 0) {
    return;
  }
  if (inputRefused_ && inputs_.empty()) {
    inputs_ = inputsBeforeConfiguration_;
  }
  if (running_) {
    applyChange();
  } else if (inputs_ != inputsBeforeConfiguration_) {
    inputsBeforeUntried_ = inputsBeforeConfiguration_;
  }
  inputsBeforeConfiguration_.clear();
}

void AVCaptureSession::applyChange() {
  const auto chosen = chosenDevice();
  if (!chosen) {
    closeDevice();
  } else if (!activeDevice_ || activeDevice_->uniqueID() != chosen->uniqueID()) {
    if (!openChosenDevice() && !inputsBeforeConfiguration_.empty()) {
      inputs_ = inputsBeforeConfiguration_;
    }
  }
}

std::shared_ptr<AVCaptureDevice> AVCaptureSession::chosenDevice() const {
  return inputs_.empty() ? nullptr : inputs_.front()->device();
}

/// Keeps the open camera until the new one is open.
bool AVCaptureSession::openChosenDevice() {
  const auto device = chosenDevice();
  if (!device || !drivers().cameras) {
    return false;
  }
  auto stream = drivers().cameras->open(
      device->uniqueID(), [feed = feed_, device, turn = device->turn()](const VideoFramePtr& picture) {
        feed->deliver({picture, pictureGeometry(*picture, turn), device});
      });
  if (!stream) {
    return false;
  }
  stream_ = std::move(stream);
  activeDevice_ = device;
  return true;
}

void AVCaptureSession::closeDevice() {
  stream_.reset();
  activeDevice_.reset();
}

void AVCaptureSession::startRunning() {
  if (running_) {
    return;
  }
  running_ = true;
  for (const auto& output : outputs_) {
    output->startReading();
  }
  feed_->expectFirstFrame();
  if (openDeviceToStart() && !std::exchange(hasWaited_, true)) {
    feed_->waitForFirstFrame(kLongestStart);
  }
}

/// A camera that was chosen while the session was stopped may turn out only now to be one that cannot be
/// opened.
bool AVCaptureSession::openDeviceToStart() {
  const Inputs before = std::exchange(inputsBeforeUntried_, {});
  if (openChosenDevice()) {
    return true;
  }
  if (inputs_.empty() || before.empty()) {
    return false;
  }
  inputs_ = before;
  return openChosenDevice();
}

void AVCaptureSession::stopRunning() {
  if (!running_) {
    return;
  }
  running_ = false;
  closeDevice();
  for (const auto& output : outputs_) {
    output->stopReading();
  }
}

void AVCaptureSession::removeObserver(const void*, std::string_view) const {}

void AVCaptureSession::addConsumer(const std::shared_ptr<CaptureFrameConsumer>& consumer) {
  feed_->add(consumer);
}

}  // namespace nivlo
