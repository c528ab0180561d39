#include "linux/camera/selection/SelectedCameras.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "linux/camera/demo/DemoCameras.hpp"
#include "linux/camera/files/FileCameras.hpp"
#include "linux/camera/pipewire/PipeWireCameras.hpp"
#include "linux/camera/selection/AssumedSides.hpp"
#include "linux/camera/selection/WhyNoCamera.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

using Position = AVCaptureDevicePosition;
using Kind = CameraSource::Kind;

/// One side of the device. `driver` and `uniqueID` are set where a particular camera was chosen for it.
struct Side {
  Position position = Position::Unspecified;
  Kind kind = Kind::Auto;
  CameraDriver* driver = nullptr;
  std::string uniqueID;
};

class SelectedCameras : public CameraDriver {
 public:
  explicit SelectedCameras(std::function<void()> onReplaced) : onReplaced_(std::move(onReplaced)) {}

  /// Returns an error message for people, empty on success.
  std::string select(const CameraSources& sources) {
    backTurn_ = sources.backTurn;
    frontTurn_ = sources.frontTurn;
    const auto error = selectSide(Position::Back, sources.back);
    return error.empty() ? selectSide(Position::Front, sources.front) : error;
  }

  std::vector<CameraInfo> cameras() override {
    std::vector<CameraInfo> result;
    for (const auto& side : sides_) {
      if (side.kind == Kind::Auto) {
        std::ranges::copy_if(automatic(), std::back_inserter(result),
                             [&](const CameraInfo& camera) { return camera.position == side.position; });
      } else if (side.kind != Kind::None) {
        result.push_back(chosen(side));
      }
    }
    if (hasAutomaticSide()) {
      std::ranges::copy_if(automatic(), std::back_inserter(result), [&](const CameraInfo& camera) {
        return camera.position == Position::Unspecified &&
               std::ranges::none_of(
                   result, [&](const CameraInfo& other) { return other.uniqueID == camera.uniqueID; });
      });
      assumedSides_.assume(result, automaticSides());
    }
    for (auto& camera : result) {
      camera.turn = camera.position == Position::Front ? frontTurn_ : backTurn_;
    }
    return result;
  }

  std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) override {
    for (const auto& side : sides_) {
      if (side.driver && side.uniqueID == uniqueID) {
        return side.driver->open(uniqueID, std::move(onFrame));
      }
    }
    if (!hasAutomaticSide()) {
      return nullptr;
    }
    return (uniqueID.starts_with("demo:") ? demo() : pipeWire()).open(uniqueID, std::move(onFrame));
  }

 private:
  std::string selectSide(Position position, const CameraSource& source) {
    auto& side = sides_.at(position == Position::Back ? 0 : 1);
    side.position = position;
    side.kind = source.kind;
    switch (source.kind) {
      case Kind::Demo:
        side.driver = &demo();
        side.uniqueID = position == Position::Back ? "demo:back" : "demo:front";
        break;
      case Kind::PipeWire:
        side.driver = &pipeWire();
        side.uniqueID = "pipewire:" + source.value;
        break;
      case Kind::File: {
        std::string error;
        auto file = makeFileCamera(source.value, position, &error);
        if (!file) {
          return error;
        }
        side.driver = file.get();
        side.uniqueID = file->cameras().front().uniqueID;
        files_.push_back(std::move(file));
        break;
      }
      case Kind::Auto:
      case Kind::None:
        break;
    }
    return "";
  }

  static CameraInfo chosen(const Side& side) {
    CameraInfo info{side.uniqueID, side.uniqueID, side.position};
    info.connected = false;
    for (auto& camera : side.driver->cameras()) {
      if (camera.uniqueID == side.uniqueID) {
        info.localizedName = camera.localizedName;
        info.connected = true;
      }
    }
    return info;
  }

  std::vector<Position> automaticSides() const {
    std::vector<Position> positions;
    for (const auto& side : sides_) {
      if (side.kind == Kind::Auto) {
        positions.push_back(side.position);
      }
    }
    return positions;
  }

  bool hasAutomaticSide() const { return !automaticSides().empty(); }

  std::vector<CameraInfo> automatic() {
    if (demoStandsIn_) {
      return demo().cameras();
    }
    auto found = pipeWire().cameras();
    if (found.empty() && !pipeWireHadCameras_) {
      demoStandsIn_ = true;
      const auto why = whyNoCamera(pipeWire().daemonRuns(), videoDevices());
      NSLog("cameras: %@, so the demo scenes stand in until there is a camera; %@", why.cause, why.remedy);
      return demo().cameras();
    }
    pipeWireHadCameras_ = true;
    return found;
  }

  /// Once there has been a real camera, the demo never comes back: whoever unplugs a camera expects it to
  /// return when it is plugged in again.
  void camerasChanged() {
    const auto found = pipeWire().cameras();
    if (!demoStandsIn_ || found.empty()) {
      return;
    }
    demoStandsIn_ = false;
    pipeWireHadCameras_ = true;
    NSLog("cameras: PipeWire now has %@, which takes the place of the demo scenes", found.front().uniqueID);
    if (onReplaced_) {
      onReplaced_();
    }
  }

  PipeWireCameraDriver& pipeWire() {
    if (!pipeWire_) {
      pipeWire_ = makePipeWireCameras([this] { camerasChanged(); });
    }
    return *pipeWire_;
  }

  CameraDriver& demo() {
    if (!demo_) {
      demo_ = makeDemoCameras();
    }
    return *demo_;
  }

  const std::function<void()> onReplaced_;
  std::array<Side, 2> sides_;
  PictureTurn backTurn_;
  PictureTurn frontTurn_;
  AssumedSides assumedSides_;
  std::unique_ptr<PipeWireCameraDriver> pipeWire_;
  std::unique_ptr<CameraDriver> demo_;
  std::vector<std::unique_ptr<CameraDriver>> files_;
  bool demoStandsIn_ = false;
  bool pipeWireHadCameras_ = false;
};

}  // namespace

std::unique_ptr<CameraDriver> makeSelectedCameras(const CameraSources& sources, std::string* error,
                                                  std::function<void()> onReplaced) {
  auto cameras = std::make_unique<SelectedCameras>(std::move(onReplaced));
  *error = cameras->select(sources);
  return error->empty() ? std::move(cameras) : nullptr;
}

}  // namespace nivlo
