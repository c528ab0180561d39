// What a PipeWire node says about the camera behind it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo::pipewire {

struct CameraNode {
  std::uint32_t id = 0;  ///< changes each time that the camera comes back, as the serial does
  std::string serial;
  std::string name;         ///< stays the same
  std::string description;  ///< for people
  AVCaptureDevicePosition position = AVCaptureDevicePosition::Unspecified;
  int rotation = 0;  ///< as VideoFrame::rotation
};

/// The value of a property, or null.
using PropertyLookup = std::function<const char*(const char* key)>;

/// Reads a node's properties. A node without a name yields one whose name is empty.
CameraNode describeCamera(std::uint32_t id, const PropertyLookup& property);

/// Whether `first` is to be offered before `second`: back cameras come first, front cameras last.
bool comesBefore(const CameraNode& first, const CameraNode& second);

}  // namespace nivlo::pipewire
