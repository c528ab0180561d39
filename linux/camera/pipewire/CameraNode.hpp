// A camera as its PipeWire node describes it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

struct CameraNode {
  std::uint32_t id = 0;     ///< PipeWire's number for the node; another one each time the camera comes back
  std::string serial;       ///< like the ID, but never used for a second node
  std::string name;         ///< stays the same when the camera comes back; empty for a node without a name
  std::string description;  ///< for people
  AVCaptureDevicePosition position = AVCaptureDevicePosition::Unspecified;
  int rotation = 0;       ///< see VideoFrame::rotation
  bool onlyGrey = false;  ///< every format that it offers is one of greys
};

/// Returns the value of a property, or null.
using PropertyLookup = std::function<const char*(const char* key)>;

/// Reads a node's properties. The position is the one that libcamera states. Where it states none, words such
/// as "front" or "rear" in the name, then in the description, decide.
CameraNode describeCamera(std::uint32_t id, const PropertyLookup& property);

/// Returns whether `first` is listed before `second`: back cameras come first, front cameras after those of
/// unknown position, and those that offer only grey at the end. Names, then IDs, decide between the rest, so
/// that the order does not depend on the order in which cameras were plugged in.
bool comesBefore(const CameraNode& first, const CameraNode& second);

}  // namespace nivlo
