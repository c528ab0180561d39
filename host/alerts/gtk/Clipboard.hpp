// The desktop's clipboard.
#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

namespace nivlo {

/// Puts texts on the clipboard. Main thread only; startToolkit() must have succeeded.
class Clipboard {
 public:
  Clipboard();
  ~Clipboard();
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;

  /// Offers the text, byte for byte, to every program on the desktop, for as long as this process runs.
  void offer(const std::string& text);

  /// Calls `unneeded` once the desktop can do without this process: at once, if nothing of it is on the
  /// clipboard; else when a clipboard manager has taken the content over, or something else was copied. It
  /// may be called before this returns.
  void whenUnneeded(std::function<void()> unneeded);

 private:
  void check();

  GdkClipboard* clipboard_;
  std::function<void()> unneeded_;
};

}  // namespace nivlo
