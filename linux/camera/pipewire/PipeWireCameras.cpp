#include "linux/camera/pipewire/PipeWireCameras.hpp"

#include <algorithm>
#include <list>
#include <optional>
#include <string_view>
#include <utility>

#include "linux/camera/pipewire/CameraCapture.hpp"
#include "linux/camera/pipewire/CameraRegistry.hpp"
#include "linux/camera/pipewire/PipeWireLoop.hpp"
#include "platform/Foundation/Dispatch.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {
namespace {

constexpr std::string_view kPrefix = "pipewire:";
constexpr std::chrono::milliseconds kFirstListTimeout{900};
// The cameras of one device come one after the other; they are announced together.
constexpr std::chrono::milliseconds kSettling{300};

/// Belongs to the driver, so that nobody calls it once the driver is gone.
using ChangeHandler = std::function<void()>;

/// State that the driver shares with its open streams, which may outlive it. Everything but the loop is used
/// on the loop's thread only.
struct PipeWireSession {
  explicit PipeWireSession(std::weak_ptr<ChangeHandler> changeHandler) : onChange(std::move(changeHandler)) {
    if (!loop.isRunning()) {
      return;
    }
    loop.run([this] {
      settled.emplace(loop, [this] { tellMainThread(); });
      registry.emplace(loop,
                       CameraRegistry::Callbacks{[this] { camerasChanged(); }, [this] { connectionLost(); }});
    });
    loop.waitForWake([this] { return registry->isSettled(); }, kFirstListTimeout);
  }

  ~PipeWireSession() {
    if (loop.isRunning()) {
      loop.run([this] {
        registry.reset();
        settled.reset();
      });
    }
  }

  void camerasChanged() {
    settled->set(kSettling);
    for (CameraCapture& capture : captures) {
      capture.camerasChanged();
    }
  }

  void connectionLost() {
    for (CameraCapture& capture : captures) {
      capture.connectionLost();
    }
  }

  void tellMainThread() {
    dispatch_async(dispatch_get_main_queue(), [onChange = onChange] {
      if (const auto handler = onChange.lock()) {
        (*handler)();
      }
    });
  }

  const std::weak_ptr<ChangeHandler> onChange;
  PipeWireLoop loop;
  std::optional<LoopTimer> settled;
  std::optional<CameraRegistry> registry;
  std::list<CameraCapture> captures;
};

class PipeWireStream : public CameraStream {
 public:
  PipeWireStream(std::shared_ptr<PipeWireSession> session, const std::string& name,
                 CameraFrameHandler onFrame)
      : session_(std::move(session)) {
    session_->loop.run([&] {
      session_->captures.emplace_front(session_->loop, *session_->registry, name, std::move(onFrame));
      capture_ = session_->captures.begin();
    });
  }

  ~PipeWireStream() override {
    session_->loop.run([this] { session_->captures.erase(capture_); });
  }

 private:
  std::shared_ptr<PipeWireSession> session_;
  std::list<CameraCapture>::iterator capture_;
};

class PipeWireCameras : public PipeWireCameraDriver {
 public:
  explicit PipeWireCameras(ChangeHandler onChange)
      : onChange_(onChange ? std::make_shared<ChangeHandler>(std::move(onChange)) : nullptr) {}

  std::vector<CameraInfo> cameras() override {
    std::vector<CameraInfo> result;
    if (!session_->loop.isRunning()) {
      return result;
    }
    session_->loop.run([&] {
      for (const CameraNode& camera : session_->registry->cameras()) {
        // A camera for recognising faces must not take the place of the one that people mean.
        const auto position = camera.onlyGrey ? AVCaptureDevicePosition::Unspecified : camera.position;
        result.push_back({std::string(kPrefix) + camera.name, camera.description, position, camera.onlyGrey});
      }
    });
    return result;
  }

  bool daemonRuns() override {
    bool runs = false;
    if (session_->loop.isRunning()) {
      session_->loop.run([&] { runs = session_->registry->isConnected(); });
    }
    return runs;
  }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    if (!uniqueID.starts_with(kPrefix) || !session_->loop.isRunning()) {
      return nullptr;
    }
    const auto name = uniqueID.substr(kPrefix.size());
    if (!isThere(uniqueID)) {
      NSLog(
          "camera %@: there is no such camera; plug it in, and its picture appears ('nivlo devices' lists "
          "those there are)",
          name);
    }
    return std::make_unique<PipeWireStream>(session_, name, std::move(onFrame));
  }

 private:
  bool isThere(const std::string& uniqueID) {
    const auto known = cameras();
    return std::any_of(known.begin(), known.end(),
                       [&](const CameraInfo& camera) { return camera.uniqueID == uniqueID; });
  }

  const std::shared_ptr<ChangeHandler> onChange_;
  const std::shared_ptr<PipeWireSession> session_ = std::make_shared<PipeWireSession>(onChange_);
};

}  // namespace

std::unique_ptr<PipeWireCameraDriver> makePipeWireCameras(std::function<void()> onChange) {
  return std::make_unique<PipeWireCameras>(std::move(onChange));
}

}  // namespace nivlo
