#include "linux/camera/PacedStream.hpp"

#include <utility>

#include "platform/Foundation/NSThread.hpp"

namespace nivlo {

PacedStream::PacedStream(Clock::duration interval, FrameSource source, CameraFrameHandler onFrame)
    : interval_(interval),
      source_(std::move(source)),
      onFrame_(std::move(onFrame)),
      thread_([this](const std::stop_token& stop) { run(stop); }) {}

void PacedStream::run(const std::stop_token& stop) {
  NSThread::currentThread().setName("camera");
  auto due = Clock::now();
  while (!stop.stop_requested()) {
    if (auto frame = source_(due); frame && !stop.stop_requested()) {
      onFrame_(std::move(frame));
    }
    due += interval_;
    if (const auto now = Clock::now(); due < now) {
      due += (now - due) / interval_ * interval_;
    }
    std::unique_lock lock(mutex_);
    wake_.wait_until(lock, stop, due, [] { return false; });
  }
}

}  // namespace nivlo
