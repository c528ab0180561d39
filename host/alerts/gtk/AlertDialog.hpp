// One alert in a window of the desktop.
#pragma once

#include <functional>
#include <optional>

#include <adwaita.h>

#include "linux/handles/Owned.hpp"
#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Shows an alert from construction until it is destroyed: an answer leaves the window on the screen. Main
/// thread only; startToolkit() must have succeeded.
class AlertDialog {
 public:
  /// Called once with the button that was pressed. Escape and closing the window press the cancel button, or
  /// the last button when there is no cancel button; if that button is disabled, the index is null. The
  /// callee may destroy the dialog.
  using Answered = std::function<void(std::optional<long> buttonIndex)>;

  AlertDialog(const AlertContent& content, Answered answered);
  ~AlertDialog();
  AlertDialog(const AlertDialog&) = delete;
  AlertDialog& operator=(const AlertDialog&) = delete;

 private:
  static void respond(AdwMessageDialog* window, const char* response, gpointer self);

  long disabledButton_;
  Owned<AdwMessageDialog, g_object_unref> window_;
  Answered answered_;
};

}  // namespace nivlo
