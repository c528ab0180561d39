// The connection to a message bus that all libraries of the process share.
#pragma once

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// By default a bus that goes away ends every process that shares a connection to it: not while this lives.
/// Main thread only; connects without waiting.
class SharedBus {
 public:
  explicit SharedBus(GBusType bus);
  ~SharedBus() { g_cancellable_cancel(cancellable_.get()); }
  SharedBus(const SharedBus&) = delete;
  SharedBus& operator=(const SharedBus&) = delete;

 private:
  static void onConnected(GObject* source, GAsyncResult* result, gpointer data);

  Owned<GCancellable, g_object_unref> cancellable_;
  Owned<GDBusConnection, g_object_unref> connection_;
};

}  // namespace nivlo
