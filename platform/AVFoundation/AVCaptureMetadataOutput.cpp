#include "platform/AVFoundation/AVCaptureMetadataOutput.hpp"

#include <algorithm>
#include <utility>

#include "platform/AVFoundation/AVCaptureSession.hpp"
#include "platform/Foundation/NSThread.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

std::shared_ptr<AVCaptureMetadataOutput> AVCaptureMetadataOutput::init() {
  return std::shared_ptr<AVCaptureMetadataOutput>(new AVCaptureMetadataOutput);
}

AVCaptureMetadataOutput::~AVCaptureMetadataOutput() { stopReading(); }

void AVCaptureMetadataOutput::setMetadataObjectsDelegate(
    const std::shared_ptr<AVCaptureMetadataOutputObjectsDelegate>& delegate, dispatch_queue_t queue) {
  const std::lock_guard lock(mutex_);
  delegate_ = delegate;
  queue_.swap(queue);
}

std::shared_ptr<AVCaptureMetadataOutputObjectsDelegate> AVCaptureMetadataOutput::metadataObjectsDelegate()
    const {
  const std::lock_guard lock(mutex_);
  return delegate_.lock();
}

dispatch_queue_t AVCaptureMetadataOutput::metadataObjectsCallbackQueue() const {
  const std::lock_guard lock(mutex_);
  return queue_;
}

std::vector<std::string> AVCaptureMetadataOutput::availableMetadataObjectTypes() const {
  const auto session = this->session();
  const auto& driver = drivers().codeReader;
  return session && !session->inputs().empty() && driver ? driver->availableTypes()
                                                         : std::vector<std::string>();
}

std::vector<std::string> AVCaptureMetadataOutput::metadataObjectTypes() const {
  const std::lock_guard lock(mutex_);
  return types_;
}

void AVCaptureMetadataOutput::setMetadataObjectTypes(std::vector<std::string> types) {
  const std::lock_guard lock(mutex_);
  types_.swap(types);
}

void AVCaptureMetadataOutput::startReading() {
  if (thread_.joinable() || !drivers().codeReader) {
    return;
  }
  reader_ = drivers().codeReader->makeReader();
  if (reader_) {
    reading_ = true;
    thread_ = std::jthread([this](const std::stop_token& stop) { readUntilStopped(stop, *reader_); });
  }
}

void AVCaptureMetadataOutput::stopReading() {
  if (!thread_.joinable()) {
    return;
  }
  reading_ = false;
  thread_.request_stop();
  thread_.join();
  reader_.reset();
  const std::lock_guard lock(mutex_);
  newest_.reset();
}

void AVCaptureMetadataOutput::consume(const CaptureFrame& frame) {
  if (reportUnderWay_) {
    return;
  }
  const auto delegate = metadataObjectsDelegate();
  if (!delegate || !delegate->wantsMetadataObjects()) {
    return;
  }
  const std::lock_guard lock(mutex_);
  if (!types_.empty()) {
    newest_ = frame;
    frameCame_.notify_one();
  }
}

std::optional<CaptureFrame> AVCaptureMetadataOutput::waitForFrame(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  frameCame_.wait(lock, stop, [this] { return newest_.has_value(); });
  return std::exchange(newest_, std::nullopt);
}

void AVCaptureMetadataOutput::readUntilStopped(const std::stop_token& stop, CodeReader& reader) {
  NSThread::currentThread().setName("looks");
  while (!stop.stop_requested()) {
    auto frame = waitForFrame(stop);
    const auto start = std::chrono::steady_clock::now();
    if (frame) {
      examine(*frame, reader, stop);
      frame.reset();  // The camera may need its buffer before the next frame is due.
    }
    std::unique_lock lock(mutex_);
    frameCame_.wait_until(lock, stop, start + reader.lookInterval(), [] { return false; });
  }
}

/// Holds the delegate only while it examines the frame, so that the delegate's owner is the one to end it.
void AVCaptureMetadataOutput::examine(const CaptureFrame& frame, CodeReader& reader,
                                      const std::stop_token& stop) {
  const auto delegate = metadataObjectsDelegate();
  // The delegate may have changed its mind since the frame came.
  if (!delegate || reportUnderWay_ || !delegate->wantsMetadataObjects() || !reader.mayLook()) {
    return;
  }
  auto seen = ofChosenTypes(reader.look(*frame.picture));
  // Whoever has ended the watching during the look does not expect to hear of it.
  if (stop.stop_requested() || !reader.mayLook()) {
    return;
  }
  if (reportDropped_.exchange(false)) {
    sightings_.forget(reported_);
  }
  auto code = sightings_.nextNew(frame.device ? frame.device->uniqueID() : "", std::move(seen),
                                 std::chrono::steady_clock::now());
  if (code) {
    report(*code, frame.geometry);
    reported_ = std::move(*code);
  }
}

std::vector<DecodedCode> AVCaptureMetadataOutput::ofChosenTypes(std::vector<DecodedCode> codes) const {
  const auto types = metadataObjectTypes();
  std::erase_if(codes, [&](const DecodedCode& code) {
    return std::find(types.begin(), types.end(), code.type) == types.end();
  });
  return codes;
}

void AVCaptureMetadataOutput::report(const DecodedCode& code, const PictureGeometry& picture) {
  const auto queue = metadataObjectsCallbackQueue();
  if (!queue) {
    return;
  }
  MetadataObjects objects{
      std::make_shared<AVMetadataMachineReadableCodeObject>(code.type, code.text, code.corners, picture)};
  reportUnderWay_ = true;
  dispatch_async(queue, [self = weak_from_this(), objects = std::move(objects)] {
    const auto output = self.lock();
    if (!output) {
      return;
    }
    const auto delegate = output->metadataObjectsDelegate();
    if (delegate && output->reading_ && delegate->wantsMetadataObjects()) {
      delegate->captureOutput(*output, objects, {output->session_});
    } else {
      output->reportDropped_ = true;
    }
    output->reportUnderWay_ = false;
  });
}

}  // namespace nivlo
