// Finds machine-readable codes in a session's picture and reports them.
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/AVFoundation/AVCaptureDevice.hpp"
#include "platform/AVFoundation/AVMetadataObject.hpp"
#include "platform/AVFoundation/CaptureFrame.hpp"
#include "platform/AVFoundation/CodeSightings.hpp"
#include "platform/Foundation/Dispatch.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

class AVCaptureMetadataOutput;
class AVCaptureSession;

/// The way from a session's inputs to an output.
struct AVCaptureConnection {
  std::weak_ptr<AVCaptureSession> session;
};

class AVCaptureMetadataOutputObjectsDelegate {
 public:
  virtual ~AVCaptureMetadataOutputObjectsDelegate() = default;

  /// A report, on the queue given to setMetadataObjectsDelegate.
  virtual void captureOutput(AVCaptureMetadataOutput& output, const MetadataObjects& objects,
                             const AVCaptureConnection& connection) = 0;

  /// Whether a report would be taken now. While it would not, no picture is looked at. Asked for every frame,
  /// on any thread, so it must be as cheap as reading a flag.
  virtual bool wantsMetadataObjects() const { return true; }
};

/// Looks at the newest frame, as often as the reader says, on a thread of its own that runs while the session
/// runs. A code that stays in view is reported once, and again after it has been out of view for a second;
/// time in which the delegate wants no report does not count. While a report is on its way no other is made;
/// one that the delegate no longer wants when it arrives is dropped, and its codes count as not reported.
/// Operations are for the main thread, except where they say otherwise.
class AVCaptureMetadataOutput : public CaptureFrameConsumer,
                                public std::enable_shared_from_this<AVCaptureMetadataOutput> {
 public:
  static std::shared_ptr<AVCaptureMetadataOutput> init();
  ~AVCaptureMetadataOutput() override;
  AVCaptureMetadataOutput(const AVCaptureMetadataOutput&) = delete;
  AVCaptureMetadataOutput& operator=(const AVCaptureMetadataOutput&) = delete;

  /// The delegate is not kept alive; the queue is. Callable from any thread.
  void setMetadataObjectsDelegate(const std::shared_ptr<AVCaptureMetadataOutputObjectsDelegate>& delegate,
                                  dispatch_queue_t queue);
  std::shared_ptr<AVCaptureMetadataOutputObjectsDelegate> metadataObjectsDelegate() const;
  dispatch_queue_t metadataObjectsCallbackQueue() const;

  /// What the reader knows, once the output is in a session that has a camera; nothing before.
  std::vector<std::string> availableMetadataObjectTypes() const;
  /// The types that are reported; none at first, and then no picture is looked at.
  std::vector<std::string> metadataObjectTypes() const;
  void setMetadataObjectTypes(std::vector<std::string> types);

  /// The session that the output is in, or null.
  std::shared_ptr<AVCaptureSession> session() const { return session_.lock(); }

  /// For the session: joining it, and its starts and stops. Stopping waits for a look that is under way.
  void setSession(const std::shared_ptr<AVCaptureSession>& session) { session_ = session; }
  void startReading();
  void stopReading();

  void consume(const CaptureFrame& frame) override;

 private:
  AVCaptureMetadataOutput() = default;
  void readUntilStopped(const std::stop_token& stop, CodeReader& reader);
  void lookAt(const CaptureFrame& frame, CodeReader& reader, CodeSightings& sightings,
              std::vector<DecodedCode>& reported);
  std::optional<CaptureFrame> waitForFrame(const std::stop_token& stop);
  void report(const std::vector<DecodedCode>& codes, const PictureGeometry& picture);
  std::vector<DecodedCode> ofChosenTypes(std::vector<DecodedCode> codes) const;

  std::weak_ptr<AVCaptureSession> session_;
  mutable std::mutex mutex_;
  std::condition_variable_any frameCame_;
  std::weak_ptr<AVCaptureMetadataOutputObjectsDelegate> delegate_;
  dispatch_queue_t queue_;
  std::vector<std::string> types_;
  std::optional<CaptureFrame> newest_;
  std::atomic<bool> reportUnderWay_{false};
  std::atomic<bool> reportDropped_{false};
  std::unique_ptr<CodeReader> reader_;
  std::jthread thread_;
};

}  // namespace nivlo
