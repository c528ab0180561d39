// Runs a camera and hands its frames to layers and outputs.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/AVFoundation/AVCaptureDeviceInput.hpp"
#include "platform/AVFoundation/CaptureFrame.hpp"

namespace nivlo {

class AVCaptureMetadataOutput;

/// Connects a camera with the preview layers that show its picture and the outputs that examine it. The
/// camera is open while the session runs, and only then. A session has at most one input.
///
/// Main thread only. The frames travel on the camera's thread, so nothing that takes them may block.
class AVCaptureSession : public std::enable_shared_from_this<AVCaptureSession> {
 public:
  using Inputs = std::vector<std::shared_ptr<AVCaptureDeviceInput>>;
  using Outputs = std::vector<std::shared_ptr<AVCaptureMetadataOutput>>;

  static std::shared_ptr<AVCaptureSession> init();
  ~AVCaptureSession();
  AVCaptureSession(const AVCaptureSession&) = delete;
  AVCaptureSession& operator=(const AVCaptureSession&) = delete;

  /// Returns a copy, which later changes leave alone.
  Inputs inputs() const { return inputs_; }
  /// False for null, and while the session has an input.
  bool canAddInput(const std::shared_ptr<AVCaptureDeviceInput>& input) const;
  /// Adds the input; a running session opens its camera. An input that cannot be added is left out, and the
  /// configuration that it was part of may be rolled back for it (see commitConfiguration).
  void addInput(const std::shared_ptr<AVCaptureDeviceInput>& input);
  /// Removes the input; a running session closes its camera. Does nothing for an input that the session does
  /// not have.
  void removeInput(const std::shared_ptr<AVCaptureDeviceInput>& input);

  /// False for null, and for an output that is in a session already, be it this one or another.
  bool canAddOutput(const std::shared_ptr<AVCaptureMetadataOutput>& output) const;
  /// Adds the output, for the rest of the session's life. An output that cannot be added is left out.
  void addOutput(const std::shared_ptr<AVCaptureMetadataOutput>& output);
  const Outputs& outputs() const { return outputs_; }

  /// Begins a change that takes effect as one step, at the matching commitConfiguration(). Changes may be
  /// nested; then the outermost commit counts.
  void beginConfiguration();
  /// Makes the change. A running session opens the new camera before it closes the old one, so the picture
  /// does not go dark between them. Where the new input was refused, by addInput or because its camera cannot
  /// be opened, and the session would be left without a camera, the change is rolled back: the inputs are
  /// those from before it, and the picture goes on. A change to a stopped session is rolled back likewise
  /// when the session starts. Does nothing without a matching beginConfiguration().
  void commitConfiguration();

  /// Opens the camera. The first start waits up to 2 s for the first frame; a slower camera's picture appears
  /// when it comes. Later starts do not wait, because there is a last picture to show meanwhile. Without an
  /// input, or when the camera cannot be opened, the session runs without a picture until its configuration
  /// changes. Does nothing while the session runs.
  void startRunning();
  /// Closes the camera. No frame is handed out once this has returned. Does nothing while the session is
  /// stopped.
  void stopRunning();
  bool isRunning() const { return running_; }

  /// The camera that is open; null while the session is stopped or has no picture.
  std::shared_ptr<AVCaptureDevice> activeDevice() const { return activeDevice_; }

  /// Does nothing: no property of a session can be observed, so there is never an observer to remove.
  void removeObserver(const void* observer, std::string_view keyPath) const;

  /// Hands every frame to the consumer for as long as that lives. The session does not keep it alive.
  void addConsumer(const std::shared_ptr<CaptureFrameConsumer>& consumer);

 private:
  class Feed;

  AVCaptureSession();
  std::shared_ptr<AVCaptureDevice> chosenDevice() const;
  bool openChosenDevice();
  bool openDeviceToStart();
  void closeDevice();
  void applyChange();

  Inputs inputs_;
  Outputs outputs_;
  int configurationDepth_ = 0;
  Inputs inputsBeforeConfiguration_;
  bool inputRefused_ = false;
  Inputs inputsBeforeUntried_;  ///< from before the last change, as long as that has not been started
  bool hasWaited_ = false;
  bool running_ = false;
  std::shared_ptr<Feed> feed_;
  std::shared_ptr<AVCaptureDevice> activeDevice_;
  std::unique_ptr<CameraStream> stream_;
};

}  // namespace nivlo
