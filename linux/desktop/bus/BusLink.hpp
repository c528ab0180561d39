// A connection to a message bus that is made again when the bus comes back.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"
#include "linux/handles/OwnedSource.hpp"
#include "linux/timing/Backoff.hpp"

namespace nivlo {

/// Keeps a connection to a message bus. When the bus cannot be reached or goes away, it tries again, at first
/// soon and then less and less often. Main thread only. Nothing here waits.
class BusLink {
 public:
  /// Handlers that the link calls, never from its constructor.
  struct Events {
    /// The bus was reached. The connection is valid until `lost` is called or the link is destroyed.
    std::function<void(GDBusConnection*)> connected;
    /// The connection is about to be released, because the bus went away.
    std::function<void()> lost;
    /// An attempt to reach the bus has failed, or the bus went away.
    std::function<void(const std::string& cause)> failed;
  };

  /// Begins to connect. With an empty address it fails once and does not try again.
  BusLink(const std::string& address, Events events);
  ~BusLink();
  BusLink(const BusLink&) = delete;
  BusLink& operator=(const BusLink&) = delete;

 private:
  void connect();
  void connectLater();
  static void onConnected(GObject* source, GAsyncResult* result, gpointer data);
  static void onClosed(GDBusConnection* connection, gboolean byPeer, GError* error, gpointer data);

  std::string address_;
  Events events_;
  Backoff delay_{std::chrono::milliseconds(250), std::chrono::minutes(1)};
  Owned<GCancellable, g_object_unref> cancellable_;
  Owned<GDBusConnection, g_object_unref> connection_;
  OwnedSource retry_;
};

/// The address of the system bus: what the environment says, or else the standard one.
std::string systemBusAddress();
/// The address of the user's session bus, from the environment or in the user's runtime directory. Empty when
/// there is no session bus.
std::string sessionBusAddress();

}  // namespace nivlo
