#include "linux/desktop/bus/SharedBus.hpp"

namespace nivlo {

SharedBus::SharedBus(GBusType bus) : cancellable_(g_cancellable_new()) {
  g_bus_get(bus, cancellable_.get(), onConnected, this);
}

void SharedBus::onConnected(GObject*, GAsyncResult* result, gpointer data) {
  GError* raw = nullptr;
  Owned<GDBusConnection, g_object_unref> connection(g_bus_get_finish(result, &raw));
  const Owned<GError, g_error_free> error(raw);
  if (connection) {
    g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
  }
  if (!g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
    static_cast<SharedBus*>(data)->connection_ = std::move(connection);
  }
}

}  // namespace nivlo
