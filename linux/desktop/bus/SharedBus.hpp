// Survives the loss of a message bus that libraries of this process use.
#pragma once

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Keeps the process alive when a message bus goes away. GLib gives all libraries of a process, the toolkit
/// among them, one connection to the bus, and by default ends the process when that connection is lost. As
/// long as this object exists, it does not. Main thread only. Connects without waiting.
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
