// The interface of everything that tells the places of windows.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/surfaces/windows/DesktopWindows.hpp"

namespace nivlo {

/// A connection to a compositor that tells the places of its windows. Never blocks. Main thread only.
class WindowSource {
 public:
  /// Called through the main loop, and `ended` also while the source is asked. None of them may destroy the
  /// source.
  struct Handlers {
    std::function<void()> changed;  ///< some window may be elsewhere now
    std::function<void(DesktopWindows windows)> answered;
    std::function<void(const std::string& cause)> ended;  ///< called once, and nothing after it
  };

  WindowSource() = default;
  virtual ~WindowSource() = default;
  WindowSource(const WindowSource&) = delete;
  WindowSource& operator=(const WindowSource&) = delete;

  /// Asks where the windows are. Must not be called again before the answer has come.
  virtual void ask() = 0;
};

/// Connects to a compositor. Returns null, with the cause in `*error`, if it cannot be reached.
using OpenWindowSource =
    std::function<std::unique_ptr<WindowSource>(WindowSource::Handlers handlers, std::string* error)>;

}  // namespace nivlo
