// An X server of a test's own, and other programs' windows on it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

#include "linux/handles/Owned.hpp"
#include "tests/support/ChildProcess.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// An X server of 800x600 pixels that picks its own display number, and a client to inspect it with. The
/// constructor throws std::runtime_error if the server does not start.
class PrivateDisplay {
 public:
  explicit PrivateDisplay(const std::vector<std::string>& arguments = {});

  Environment environment() const { return {{"DISPLAY", name_}}; }
  xcb_connection_t* client() const { return client_.get(); }
  xcb_window_t root() const { return xcb_setup_roots_iterator(xcb_get_setup(client())).data->root; }
  xcb_atom_t atom(const std::string& name) const;
  void kill() { server_->kill(); }
  /// Divides the screen into a left and a right monitor.
  void split() const;
  void run(std::vector<std::string> command) const { outputOf(std::move(command), environment()); }

  /// Waits until the screen has this colour, within 3 of 255, at a place. Returns whether it came to that.
  bool shows(Picture::Color color, int x, int y) const;
  /// The window that a click at this place would go to; XCB_NONE for the root window.
  xcb_window_t windowAt(int x, int y) const;
  /// The children of the root window, the lowest first.
  std::vector<xcb_window_t> stack() const;
  /// The child of the root window that contains the window; XCB_NONE if it is gone.
  xcb_window_t topOf(xcb_window_t window) const;
  /// The place of a child of the root window.
  xcb_rectangle_t placeOf(xcb_window_t window) const;
  /// The title that the window itself has, not a window inside its frame; empty if there is none.
  std::string titleOf(xcb_window_t window) const;

 private:
  std::optional<ChildProcess> server_;
  std::string name_;
  Owned<xcb_connection_t, xcb_disconnect> client_{nullptr};
};

/// Another program's window, for as long as this object lives.
class ForeignX11Window {
 public:
  static constexpr Picture::Color kColor{192, 32, 32};

  struct Look {
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::uint16_t width = 100;
    std::uint16_t height = 100;
    std::vector<std::string> states;  ///< of _NET_WM_STATE
    std::string type;                 ///< of _NET_WM_WINDOW_TYPE
    Picture::Color color = kColor;
  };

  /// The display must outlive the window.
  ForeignX11Window(const PrivateDisplay& display, const Look& look);
  ~ForeignX11Window();
  ForeignX11Window(const ForeignX11Window&) = delete;
  ForeignX11Window& operator=(const ForeignX11Window&) = delete;

  xcb_window_t window() const { return window_; }
  /// Waits for a mouse button to be pressed on the window. Returns whether that happened.
  bool isClicked() const;

 private:
  xcb_connection_t* client_;
  xcb_window_t window_;
};

}  // namespace nivlo::test
