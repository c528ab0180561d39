// The controls as an object on one bus connection.
#pragma once

#include <gio/gio.h>

#include "host/control/ControlProperties.hpp"
#include "host/control/Controls.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Offers kControlInterface and the actions at kControlPath as long as it exists. Main thread only.
class ControlObject {
 public:
  /// `controls` and `actions` must outlive it.
  ControlObject(GDBusConnection* connection, Controls& controls, GActionGroup* actions);
  ~ControlObject();
  ControlObject(const ControlObject&) = delete;
  ControlObject& operator=(const ControlObject&) = delete;

  /// Signals the properties that have changed since the last call, or since the object was made, in one
  /// signal.
  void signalChanges();

 private:
  static const GDBusInterfaceVTable kHandlers;

  PropertyValues properties() const;

  Owned<GDBusConnection, g_object_unref> connection_;
  Controls& controls_;
  PropertyValues signalled_;
  guint interface_;
  guint actions_;
};

}  // namespace nivlo
