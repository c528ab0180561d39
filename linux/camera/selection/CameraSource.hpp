// Which camera stands at one side of the device, as the user chooses it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

struct CameraSource {
  enum class Kind {
    Auto,      ///< a PipeWire camera, or the demo camera where there is none at all
    Demo,      ///< the drawn scene of that side
    PipeWire,  ///< the PipeWire node named by `value`
    File,      ///< the picture or film at the path `value`
    None,      ///< no camera on that side
  };
  Kind kind = Kind::Auto;
  std::string value;
};

/// Reads "auto", "demo", "pipewire:NODE", "file:PATH" or "none"; nothing for any other text.
std::optional<CameraSource> parseCameraSource(std::string_view text);

/// The text that parseCameraSource() reads as this source.
std::string cameraSourceText(const CameraSource& source);

struct CameraSources {
  CameraSource back;
  CameraSource front;
};

/// Reads "back=SOURCE" or "front=SOURCE" into the side it names. Returns an error message, empty on success.
std::string applyCameraSource(std::string_view text, CameraSources* sources);

}  // namespace nivlo
