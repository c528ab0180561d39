// The controls as actions, which is what status bars and launchers know how to call.
#pragma once

#include <gio/gio.h>

#include "host/control/Controls.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

/// The actions "paused" and "scanning" (boolean states), "preset" (an int32 state), "swap" and "quit". Their
/// states follow the controls. Main thread only.
class ControlActions {
 public:
  /// The controls must outlive it.
  explicit ControlActions(Controls& controls);
  ~ControlActions();
  ControlActions(const ControlActions&) = delete;
  ControlActions& operator=(const ControlActions&) = delete;

  GActionGroup* group() const { return G_ACTION_GROUP(group_.get()); }

 private:
  void setState(const char* action, GVariant* state);
  void follow();

  Controls& controls_;
  Owned<GSimpleActionGroup, g_object_unref> group_;
};

}  // namespace nivlo
