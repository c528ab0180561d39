// One alert as a window of the desktop.
#pragma once

#include <functional>
#include <optional>

#include <adwaita.h>

#include "linux/glib/Owned.hpp"
#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// On the screen from construction until it is answered or destroyed. Main thread only, with the toolkit
/// started.
class AlertDialog {
 public:
  /// Told which button was pressed. Escape and the window's end press the cancel button, without one the last
  /// button; nothing is told where that one cannot be pressed. May destroy the dialog.
  using Answered = std::function<void(std::optional<long> buttonIndex)>;

  AlertDialog(const AlertContent& content, Answered answered);
  ~AlertDialog();
  AlertDialog(const AlertDialog&) = delete;
  AlertDialog& operator=(const AlertDialog&) = delete;

 private:
  static void respond(AdwMessageDialog* window, const char* response, gpointer self);

  Owned<AdwMessageDialog, g_object_unref> window_;
  Answered answered_;
  long disabledButtonIndex_;
  bool onScreen_ = true;
};

}  // namespace nivlo
