// Windows of dialogs, used again and again.
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

/// A dialog's window, with a response "0", "1", ... for each of its buttons.
using DialogWindow = std::unique_ptr<AdwMessageDialog, WindowEnd>;

/// GTK's software renderer keeps a picture's memory for ever when the compositor returns it after its window
/// has ended (seen with 4.8), so windows do not end: they are hidden, and taken for the next dialog. Main
/// thread only, with the toolkit started.
class DialogWindows {
 public:
  /// A hidden window with so many buttons; everything about it is to be set anew. It does not end when it is
  /// answered.
  DialogWindow take(std::size_t buttons);

  /// Hides the window and keeps it.
  void giveBack(DialogWindow window, std::size_t buttons);

 private:
  struct Kept {
    DialogWindow window;
    std::size_t buttons;
  };

  std::vector<Kept> kept_;
};

}  // namespace nivlo
