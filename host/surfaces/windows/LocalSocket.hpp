// A connection to another program of the session.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/loop/EventSource.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// A stream over a Unix domain socket, which never blocks. Main thread only.
class LocalSocket {
 public:
  /// Called through the main loop. None of them may destroy the socket.
  struct Handlers {
    std::function<void(std::string_view bytes)> received;  ///< with at least one byte
    std::function<void()> ended;  ///< called once, and nothing after it: the other end has closed it
  };

  /// Returns null, with the cause in `*error`, if nobody listens at `path` or nobody can take the connection
  /// now.
  static std::unique_ptr<LocalSocket> open(const std::string& path, Handlers handlers, std::string* error);
  LocalSocket(const LocalSocket&) = delete;
  LocalSocket& operator=(const LocalSocket&) = delete;

  /// Returns false if the other end does not take all of it at once. A part of it may then have been sent, so
  /// that the connection is of no further use.
  bool send(std::string_view bytes) const;
  /// Stops both handlers.
  void ignore() { readable_ = EventSource(); }

 private:
  LocalSocket(Descriptor socket, Handlers handlers);
  void receive();

  Descriptor socket_;
  Handlers handlers_;
  EventSource readable_;
};

}  // namespace nivlo
