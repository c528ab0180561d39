#include "linux/desktop/bus/BusLink.hpp"

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace nivlo {

BusLink::BusLink(const std::string& address, Events events)
    : address_(address), events_(std::move(events)), cancellable_(g_cancellable_new()) {
  connect();
}

BusLink::~BusLink() {
  g_cancellable_cancel(cancellable_.get());
  if (connection_) {
    g_signal_handlers_disconnect_by_data(connection_.get(), this);
  }
}

void BusLink::connect() {
  // A private connection: the one that the process shares would end the process when the bus goes away.
  g_dbus_connection_new_for_address(
      address_.c_str(),
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, cancellable_.get(), onConnected, this);
}

void BusLink::connectLater() {
  retry_.reset(g_timeout_source_new(static_cast<guint>(delay_.next().count())));
  const auto retry = [](gpointer data) -> gboolean {
    static_cast<BusLink*>(data)->connect();
    return G_SOURCE_REMOVE;
  };
  g_source_set_callback(retry_.get(), retry, this, nullptr);
  g_source_attach(retry_.get(), nullptr);
}

void BusLink::onConnected(GObject*, GAsyncResult* result, gpointer data) {
  GError* raw = nullptr;
  Owned<GDBusConnection, g_object_unref> connection(g_dbus_connection_new_for_address_finish(result, &raw));
  const Owned<GError, g_error_free> error(raw);
  if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
    return;
  }
  auto& self = *static_cast<BusLink*>(data);
  if (!connection) {
    if (!self.address_.empty()) {
      self.connectLater();
    }
    self.events_.failed(error->message);
    return;
  }
  g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
  g_signal_connect(connection.get(), "closed", G_CALLBACK(onClosed), &self);
  self.delay_.reset();
  self.connection_ = std::move(connection);
  self.events_.connected(self.connection_.get());
}

void BusLink::onClosed(GDBusConnection* connection, gboolean, GError* error, gpointer data) {
  auto& self = *static_cast<BusLink*>(data);
  g_signal_handlers_disconnect_by_data(connection, data);
  self.events_.lost();
  self.connection_.reset();
  self.connectLater();
  self.events_.failed(error ? error->message : "the connection was closed");
}

std::string systemBusAddress() {
  const Owned<gchar, g_free> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
  return address ? address.get() : "";
}

std::string sessionBusAddress() {
  // GLib's own look-up would start a bus when there is none, and wait for it.
  if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address) {
    return address;
  }
  const char* directory = std::getenv("XDG_RUNTIME_DIR");
  const auto socket = std::filesystem::path(directory ? directory : "") / "bus";
  std::error_code unreadable;
  if (!socket.is_absolute() || !std::filesystem::exists(socket, unreadable)) {
    return {};
  }
  const Owned<gchar, g_free> escaped(g_dbus_address_escape_value(socket.c_str()));
  return std::string("unix:path=") + escaped.get();
}

}  // namespace nivlo
