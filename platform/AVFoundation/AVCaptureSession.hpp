// A camera at work: what it takes in and who gets it.
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

/// Holds at most one camera. While it runs, the camera is open and its frames go to the preview layers and
/// the outputs. Main thread only, but for the frames, which arrive on the driver's thread.
class AVCaptureSession : public std::enable_shared_from_this<AVCaptureSession> {
 public:
  using Inputs = std::vector<std::shared_ptr<AVCaptureDeviceInput>>;
  using Outputs = std::vector<std::shared_ptr<AVCaptureMetadataOutput>>;

  static std::shared_ptr<AVCaptureSession> init();
  ~AVCaptureSession();
  AVCaptureSession(const AVCaptureSession&) = delete;
  AVCaptureSession& operator=(const AVCaptureSession&) = delete;

  /// A snapshot.
  Inputs inputs() const { return inputs_; }
  /// False for null, and while there is a camera already.
  bool canAddInput(const std::shared_ptr<AVCaptureDeviceInput>& input) const;
  /// An input that cannot be added is left out; within a configuration that makes it one to be rolled back
  /// (see commitConfiguration).
  void addInput(const std::shared_ptr<AVCaptureDeviceInput>& input);
  void removeInput(const std::shared_ptr<AVCaptureDeviceInput>& input);

  /// False for null, for an output that this session has, and for one that another session has.
  bool canAddOutput(const std::shared_ptr<AVCaptureMetadataOutput>& output) const;
  /// An output that cannot be added is left out.
  void addOutput(const std::shared_ptr<AVCaptureMetadataOutput>& output);
  const Outputs& outputs() const { return outputs_; }

  /// Changes between these two take effect together, at the outermost commit. A running session opens the new
  /// camera before it lets the old one go. Where an input was refused, by addInput or by the camera's driver,
  /// and the session would be left without its camera, the configuration is rolled back: the inputs are again
  /// those at the beginning, and the picture goes on.
  void beginConfiguration();
  void commitConfiguration();

  /// Opens the camera and waits for its first frame, for 2 s at most; a camera that needs longer shows its
  /// picture when it has one. Without a camera, or when it is refused, the session runs without a picture.
  void startRunning();
  /// Closes the camera; no frame goes out once it has returned.
  void stopRunning();
  bool isRunning() const { return running_; }

  /// The camera whose frames are coming, or null.
  std::shared_ptr<AVCaptureDevice> activeDevice() const { return activeDevice_; }

  /// Nothing about a session can be observed, so there is never an observation to remove; asking does
  /// nothing.
  void removeObserver(const void* observer, std::string_view keyPath) const;

  /// Lets the consumer take frames for as long as it lives.
  void addConsumer(const std::shared_ptr<CaptureFrameConsumer>& consumer);

 private:
  class Feed;

  AVCaptureSession();
  std::shared_ptr<AVCaptureDevice> chosenDevice() const;
  bool openChosenDevice();
  void closeDevice();
  void applyChange();

  Inputs inputs_;
  Outputs outputs_;
  int configurationDepth_ = 0;
  Inputs inputsBeforeConfiguration_;
  bool inputRefused_ = false;
  bool running_ = false;
  std::shared_ptr<Feed> feed_;
  std::shared_ptr<AVCaptureDevice> activeDevice_;
  std::unique_ptr<CameraStream> stream_;
};

}  // namespace nivlo
