// Dialog windows that are reused.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <adwaita.h>

namespace nivlo {

struct WindowEnd {
  void operator()(AdwMessageDialog* window) const {
    gtk_window_destroy(GTK_WINDOW(window));
    g_object_unref(window);
  }
};

/// A dialog's window. Its responses are named "0", "1" and so on, one for each button.
using DialogWindow = std::unique_ptr<AdwMessageDialog, WindowEnd>;

/// Hides answered dialogs and hands their windows out again. They are not destroyed, because GTK's software
/// renderer never frees a buffer that the compositor releases after its window is gone (seen in 4.8). Main
/// thread only; startToolkit() must have succeeded.
class DialogWindows {
 public:
  /// Returns a hidden window with this many buttons. Its texts and signal handlers are the caller's to set,
  /// as it may have shown another alert before. Answering it does not destroy it.
  DialogWindow take(std::size_t buttons);

  /// Hides the window and keeps it for the next dialog.
  void giveBack(DialogWindow window, std::size_t buttons);

 private:
  struct Kept {
    DialogWindow window;
    std::size_t buttons;
  };

  std::vector<Kept> kept_;
};

}  // namespace nivlo
