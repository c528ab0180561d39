// The controls as D-Bus actions, which status bars and launchers can call.
#pragma once

#include <gio/gio.h>

#include "host/control/Controls.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

/// A group of the actions "paused" and "scanning" (boolean states), "preset" (an int32 state), "swap" and
/// "quit". Calling them works the controls, and their states follow the wallpaper. Main thread only.
class ControlActions {
 public:
  /// `controls` must outlive it.
  explicit ControlActions(Controls& controls);
  ControlActions(const ControlActions&) = delete;
  ControlActions& operator=(const ControlActions&) = delete;

  GActionGroup* group() const { return G_ACTION_GROUP(group_.get()); }
  /// To be called when the wallpaper may have changed: sets the states.
  void follow();

 private:
  void setState(const char* action, GVariant* state);

  Controls& controls_;
  Owned<GSimpleActionGroup, g_object_unref> group_;
};

}  // namespace nivlo
