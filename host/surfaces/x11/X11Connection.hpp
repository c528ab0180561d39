// A connection to an X server.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

#include "host/loop/EventSource.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

template <typename Reply>
using X11Reply = Owned<Reply, std::free>;

/// Ignores errors of requests without a reply, because other programs' windows may disappear at any time.
/// Main thread only.
class X11Connection {
 public:
  struct Listener {
    std::function<void(const xcb_generic_event_t&)> event;  ///< called for each event
    std::function<void()> settled;                          ///< called after the events that arrived together
    /// Called once, and nothing after it: the server is gone, and requests no longer have any effect.
    std::function<void()> lost;
  };

  /// Connects to the display that DISPLAY names. Returns null, with the cause and the remedy in `*error`, if
  /// none answers or it does not take the pixels of a PixelSpan as they are.
  static std::unique_ptr<X11Connection> open(std::string* error);

  xcb_connection_t* get() const { return connection_.get(); }
  const xcb_screen_t& screen() const { return *screen_; }
  xcb_window_t root() const { return screen_->root; }

  /// Delivers events through the main loop from now on.
  void listen(Listener listener);
  /// Delivers the events that have arrived. To be called after waiting for a reply outside of a listener:
  /// events that arrived with the reply do not wake the main loop.
  void dispatch();
  void flush() { xcb_flush(get()); }

  /// The atom of this name, which is made if it does not exist; XCB_ATOM_NONE if the server is gone.
  xcb_atom_t atom(const std::string& name);
  /// The 32-bit values of a window's property; empty if there is no such property or window.
  std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);
  /// The text of a window's property, in whichever encoding it has; empty if there is no such property or
  /// window.
  std::string text(xcb_window_t window, const std::string& property);
  /// Replaces the property by 32-bit values.
  void setValues(xcb_window_t window, const std::string& property, xcb_atom_t type,
                 const std::vector<std::uint32_t>& values);
  /// Replaces the property by text; `type` is the name of its type's atom.
  void setText(xcb_window_t window, const std::string& property, const std::string& type,
               const std::string& text);
  /// Null if the server does not have the extension.
  const xcb_query_extension_reply_t* extension(xcb_extension_t& extension) const;
  /// Returns whether the window was created on this connection.
  bool owns(xcb_window_t window) const;

 private:
  using Handle = Owned<xcb_connection_t, xcb_disconnect>;

  X11Connection(Handle connection, const xcb_screen_t* screen)
      : connection_(std::move(connection)), screen_(screen) {}
  X11Reply<xcb_get_property_reply_t> property(xcb_window_t window, const std::string& name);

  Handle connection_;
  const xcb_screen_t* screen_;
  std::map<std::string, xcb_atom_t> atoms_;
  Listener listener_;
  EventSource events_;
};

}  // namespace nivlo
