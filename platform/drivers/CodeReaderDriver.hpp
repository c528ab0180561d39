// What finds machine-readable codes in a picture.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

struct DecodedCode {
  std::string type;  ///< metadata-object type identifier, for example "org.iso.QRCode"
  std::string text;  ///< UTF-8; may be empty, may hold NUL
  /// In pixels of the frame as it was delivered (neither mirrored nor turned), clockwise from the code's own
  /// top left.
  std::vector<CGPoint> corners;
};

/// Looks at frames, one after the other, always from the same thread. It may remember what it saw: successive
/// looks at one scene can try different strategies, so a code that one look misses is found by a later one.
class CodeReader {
 public:
  virtual ~CodeReader() = default;

  /// One look, of bounded cost. Any frame is acceptable; one that cannot be read yields no codes. Never
  /// throws.
  virtual std::vector<DecodedCode> look(const VideoFrame& frame) = 0;

  /// The least time from one look to the next. Asked for after each look, as it may change.
  virtual std::chrono::milliseconds lookInterval() const { return std::chrono::milliseconds(100); }
};

/// Called on the main thread.
class CodeReaderDriver {
 public:
  virtual ~CodeReaderDriver() = default;

  /// Type identifiers of the symbologies that the readers know.
  virtual std::vector<std::string> availableTypes() const = 0;

  /// A reader for one run of scanning.
  virtual std::unique_ptr<CodeReader> makeReader() = 0;
};

}  // namespace nivlo
