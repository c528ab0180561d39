// One alert as a window of the desktop.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include <adwaita.h>

#include "host/alerts/gtk/DialogWindows.hpp"
#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// On the screen from construction until it is answered or destroyed. Main thread only, with the toolkit
/// started.
class AlertDialog {
 public:
  /// Told which button was pressed. Escape and the window's end press the cancel button, without one the last
  /// button; nothing is told where that one cannot be pressed. May destroy the dialog.
  using Answered = std::function<void(std::optional<long> buttonIndex)>;

  /// Takes a window out of `windows`, which must outlive the dialog, and gives it back.
  AlertDialog(DialogWindows& windows, const AlertContent& content, Answered answered);
  ~AlertDialog();
  AlertDialog(const AlertDialog&) = delete;
  AlertDialog& operator=(const AlertDialog&) = delete;

 private:
  static void respond(AdwMessageDialog* window, const char* response, gpointer self);

  DialogWindows& windows_;
  std::size_t buttons_;
  long disabledButton_;
  DialogWindow window_;
  Answered answered_;
};

}  // namespace nivlo
