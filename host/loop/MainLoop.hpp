// The program's event loop.
#pragma once

#include <functional>
#include <memory>

#include <glib.h>

#include "platform/drivers/MainQueueDriver.hpp"

namespace nivlo {

/// A GLib main loop on the default context. Create and run it on the main thread.
class MainLoop {
 public:
  MainLoop();
  ~MainLoop();
  MainLoop(const MainLoop&) = delete;
  MainLoop& operator=(const MainLoop&) = delete;

  /// Runs until quit.
  void run();
  /// Main thread only; a quit before the run makes the run return at once.
  void quit();

  /// The main queue of the calling thread, which such a loop serves while it runs.
  static std::unique_ptr<MainQueueDriver> makeMainQueue();

  /// Runs what is ready now, without waiting; for the end of the program, when the loop no longer runs.
  static void drain();

 private:
  GMainLoop* loop_;
  bool quitting_ = false;
};

}  // namespace nivlo
