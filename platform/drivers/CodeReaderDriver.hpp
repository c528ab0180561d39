// The driver that reads machine-readable codes.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// A code that was read in a frame.
struct DecodedCode {
  std::string type;  ///< one of kMachineReadableCodeTypes, for example "org.iso.QRCode"
  std::string text;  ///< UTF-8; may be empty, and may hold NUL
  /// The corners, clockwise from the one that is at the top left when the code is upright, in pixels of the
  /// frame as the camera delivered it, neither turned upright nor mirrored.
  std::vector<CGPoint> corners;
};

/// Reads the codes in the frames of one camera, one frame after the other. It may try another strategy for
/// each frame, so that a code missed in one frame is found in a later one. Used by one thread at a time.
class CodeReader {
 public:
  virtual ~CodeReader() = default;

  /// Looks for codes in the frame, at a bounded cost, and returns those it has read, the one that the user
  /// points at last. Returns none for a frame in a format that it cannot read. Does not throw.
  virtual std::vector<DecodedCode> look(const VideoFrame& frame) = 0;

  /// Returns whether codes may be looked for now. While it returns false, no frame is examined, and the time
  /// does not count as time during which a code could have been seen to leave.
  virtual bool mayLook() const = 0;

  /// The shortest time from the start of one look to the start of the next. It may change with every look.
  virtual std::chrono::milliseconds lookInterval() const { return std::chrono::milliseconds(100); }
};

/// Makes readers. Main thread only.
class CodeReaderDriver {
 public:
  virtual ~CodeReaderDriver() = default;

  /// The types of code, from kMachineReadableCodeTypes, that the readers find.
  virtual std::vector<std::string> availableTypes() const = 0;

  /// Makes a reader for one run of a session. Null when there can be none.
  virtual std::unique_ptr<CodeReader> makeReader() = 0;

  /// False when the latest attempt to read a picture failed for a reason that has nothing to do with the
  /// picture.
  virtual bool canRead() const = 0;
};

}  // namespace nivlo
