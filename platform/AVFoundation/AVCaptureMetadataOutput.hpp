// Finds machine-readable codes in a camera's picture and reports them.
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

/// Tells a delegate where a report comes from.
struct AVCaptureConnection {
  std::weak_ptr<AVCaptureSession> session;  ///< the session that the output is in
};

/// Receives the codes that an AVCaptureMetadataOutput finds.
class AVCaptureMetadataOutputObjectsDelegate {
 public:
  virtual ~AVCaptureMetadataOutputObjectsDelegate() = default;

  /// Reports a code that has come into view. `objects` holds this code alone. Called on the queue given to
  /// setMetadataObjectsDelegate.
  virtual void captureOutput(AVCaptureMetadataOutput& output, const MetadataObjects& objects,
                             const AVCaptureConnection& connection) = 0;

  /// Returns whether the delegate would act on a report now. While it returns false, no frame is examined,
  /// which saves most of the cost of scanning. Called for every frame and on any thread, so it must be as
  /// cheap as reading an atomic flag.
  virtual bool wantsMetadataObjects() const { return true; }
};

/// Finds codes in the frames of a capture session and reports each to a delegate when it comes into view.
///
/// To scan, add the output to a session, set the delegate and its queue, and choose the types. While the
/// session runs, a thread of the output's own, named "looks", takes the newest frame as often as the code
/// reader allows, and skips the frames between. It examines none while there is no delegate, while the
/// delegate's wantsMetadataObjects() or the reader's mayLook() is false, while no type is chosen, and while
/// the previous report waits in the queue.
///
/// A code that stays in view is reported once. It is reported again after it has been out of view for a
/// second. Time during which no frame is examined does not count towards that second, and nor does time
/// during which another camera was chosen, so a code is not reported again because the session was stopped or
/// changed cameras meanwhile. Of several codes that have come into view the one nearest to the picture's
/// centre is reported, and the others follow with later looks, for as long as they stay in view. A look that
/// is under way when the session stops reports nothing. A report that the delegate does not want any more
/// when its turn comes, or that comes after the session's end, is dropped, and its code is reported again if
/// it is still in view.
///
/// Main thread only, except where a comment says otherwise.
class AVCaptureMetadataOutput : public CaptureFrameConsumer,
                                public std::enable_shared_from_this<AVCaptureMetadataOutput> {
 public:
  static std::shared_ptr<AVCaptureMetadataOutput> init();
  ~AVCaptureMetadataOutput() override;
  AVCaptureMetadataOutput(const AVCaptureMetadataOutput&) = delete;
  AVCaptureMetadataOutput& operator=(const AVCaptureMetadataOutput&) = delete;

  /// Sets who receives the reports, and the serial queue that they are delivered on. The output keeps the
  /// queue alive but not the delegate. Reports are lost while the queue is null. Callable from any thread.
  void setMetadataObjectsDelegate(const std::shared_ptr<AVCaptureMetadataOutputObjectsDelegate>& delegate,
                                  dispatch_queue_t queue);
  /// Null when none is set, or when it is gone. Callable from any thread.
  std::shared_ptr<AVCaptureMetadataOutputObjectsDelegate> metadataObjectsDelegate() const;
  /// Callable from any thread.
  dispatch_queue_t metadataObjectsCallbackQueue() const;

  /// Returns the types that this machine can find (see AVMetadataObject.hpp). Empty until the output is in a
  /// session that has a camera.
  std::vector<std::string> availableMetadataObjectTypes() const;
  /// Callable from any thread.
  std::vector<std::string> metadataObjectTypes() const;
  /// Chooses the types to report; none is chosen at first. A type that is not among the available ones is
  /// never reported. Callable from any thread.
  void setMetadataObjectTypes(std::vector<std::string> types);

  /// The session that the output is in. Null before it is added to one, and once that session is gone.
  std::shared_ptr<AVCaptureSession> session() const { return session_.lock(); }

  // The session calls these three. Stopping waits until the frame that is being examined is done with.
  void setSession(const std::shared_ptr<AVCaptureSession>& session) { session_ = session; }
  void startReading();
  void stopReading();

  /// Called on the camera's thread.
  void consume(const CaptureFrame& frame) override;

 private:
  AVCaptureMetadataOutput() = default;
  void readUntilStopped(const std::stop_token& stop, CodeReader& reader);
  void examine(const CaptureFrame& frame, CodeReader& reader, const std::stop_token& stop);
  std::optional<CaptureFrame> waitForFrame(const std::stop_token& stop);
  void report(const DecodedCode& code, const PictureGeometry& picture);
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
  std::atomic<bool> reading_{false};
  // Used by the thread alone; here, because they outlast it and serve the next one.
  CodeSightings sightings_;
  DecodedCode reported_;  // the last one
  std::jthread thread_;
};

}  // namespace nivlo
