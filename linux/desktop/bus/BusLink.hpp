// A connection to a message bus that outlives the bus.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"
#include "linux/handles/OwnedSource.hpp"
#include "linux/timing/Backoff.hpp"

namespace nivlo {

/// Connects, and connects again after the bus has gone, at first soon and then ever more seldom. Main
/// thread only; nothing is waited for.
class BusLink {
 public:
  struct Events {
    std::function<void(GDBusConnection*)> connected;
    std::function<void()> lost;  ///< only after `connected`
    /// Each time that the bus cannot be reached, or is lost.
    std::function<void(const std::string& cause)> failed;
  };

  /// An empty address is that of no bus, which fails once and is not looked for.
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

/// Where the environment says the bus is; empty when it does not.
std::string systemBusAddress();
std::string sessionBusAddress();

}  // namespace nivlo
