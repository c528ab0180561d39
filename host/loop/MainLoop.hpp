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

  /// Runs until quit() is called; returns at once if it already was.
  void run();
  /// Main thread only.
  void quit();

  /// Returns the main queue, which any such loop serves while it runs. The calling thread becomes the main
  /// thread.
  static std::unique_ptr<MainQueueDriver> makeMainQueue();

  /// Runs the work that is ready, without waiting for more. For the end of the program, when no loop runs any
  /// more.
  static void drain();

 private:
  GMainLoop* loop_;
  bool quitting_ = false;
};

}  // namespace nivlo
