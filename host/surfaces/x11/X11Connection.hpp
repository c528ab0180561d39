// The connection to an X server.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <xcb/xcb.h>

#include "host/loop/EventSource.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

template <typename Reply>
using X11Reply = Owned<Reply, std::free>;

/// Errors of requests without a reply are ignored: other people's windows go at any time. Main thread only.
class X11Connection {
 public:
  /// Who hears of events, from the main loop on.
  struct Listener {
    std::function<void(const xcb_generic_event_t&)> event;
    std::function<void()> settled;  ///< after the events that came together
    std::function<void()>
        lost;  ///< once, the last call: the server is gone, and requests do nothing any more
  };

  /// Null, with the cause and the remedy in `*error`, where there is no display, or none that takes the
  /// pixels of PixelsView as they are.
  static std::unique_ptr<X11Connection> open(std::string* error);

  xcb_connection_t* get() const { return connection_.get(); }
  const xcb_screen_t& screen() const { return *screen_; }
  xcb_window_t root() const { return screen_->root; }

  void listen(Listener listener);
  /// Hears of what has come. Call it after requests with a reply outside of a listener: events that came with
  /// the reply do not wake the main loop.
  void dispatch();
  void flush() { xcb_flush(get()); }

  xcb_atom_t atom(const std::string& name);
  /// The 32-bit values of a window's property; none where there is no such property or window.
  std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);
  void setValues(xcb_window_t window, const std::string& property, xcb_atom_t type,
                 const std::vector<std::uint32_t>& values);
  void setText(xcb_window_t window, const std::string& property, const std::string& type,
               const std::string& text);
  /// Null where the server does not have it.
  const xcb_query_extension_reply_t* extension(xcb_extension_t& extension) const;
  /// Whether the window was made on this connection.
  bool owns(xcb_window_t window) const;

 private:
  using Handle = Owned<xcb_connection_t, xcb_disconnect>;

  X11Connection(Handle connection, const xcb_screen_t* screen)
      : connection_(std::move(connection)), screen_(screen) {}

  Handle connection_;
  const xcb_screen_t* screen_;
  std::map<std::string, xcb_atom_t> atoms_;
  Listener listener_;
  EventSource events_;
};

}  // namespace nivlo
