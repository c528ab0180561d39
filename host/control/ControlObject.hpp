// The controls on one connection to the bus.
#pragma once

#include <gio/gio.h>

#include "host/control/Controls.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Answers at kControlPath, to kControlInterface and for the actions, while it lives. Main thread only.
class ControlObject {
 public:
  /// Both must outlive it.
  ControlObject(GDBusConnection* connection, Controls& controls, GActionGroup* actions);
  ~ControlObject();
  ControlObject(const ControlObject&) = delete;
  ControlObject& operator=(const ControlObject&) = delete;

 private:
  Owned<GDBusConnection, g_object_unref> connection_;
  guint interface_;
  guint actions_;
};

}  // namespace nivlo
