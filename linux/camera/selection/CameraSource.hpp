// The user's choice of a back or front camera.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

struct CameraSource {
  enum class Kind {
    Auto,      ///< whatever PipeWire cameras face that side, or the demo camera when PipeWire has none at all
    Demo,      ///< the drawn scene of that side
    PipeWire,  ///< the PipeWire node whose name is `value`
    File,      ///< the picture or film whose path is `value`
    None,      ///< no camera on that side
  };
  Kind kind = Kind::Auto;
  std::string value;  ///< set for PipeWire and File only
};

/// Parses "auto", "demo", "pipewire:NODE", "file:PATH" or "none". Nothing for any other text.
std::optional<CameraSource> parseCameraSource(std::string_view text);

/// The text that parseCameraSource() reads as this source.
std::string cameraSourceText(const CameraSource& source);

struct CameraSources {
  CameraSource back;
  CameraSource front;
  PictureTurn backTurn;
  PictureTurn frontTurn;
};

/// Parses "back=SOURCE" or "front=SOURCE" and stores the source for that side. Returns an error message for
/// people, empty on success.
std::string applyCameraSource(std::string_view text, CameraSources* sources);

/// Parses "back=TURN" or "front=TURN", where TURN is 90, 180 or 270 (degrees clockwise) or "mirror", and adds
/// it to the turn of that side; of several angles the last one counts. Returns an error message for people,
/// empty on success.
std::string applyCameraTurn(std::string_view text, CameraSources* sources);

}  // namespace nivlo
