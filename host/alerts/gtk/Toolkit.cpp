#include "host/alerts/gtk/Toolkit.hpp"

#include <adwaita.h>

namespace nivlo {

bool startToolkit() {
  // The program name becomes the application ID by which taskbars find the desktop entry.
  g_set_prgname("nivlo");
  g_set_application_name("Nivlo");
  // GTK would choose the renderer that loads the graphics drivers and a compiler, for a window of a few
  // words.
  g_setenv("GSK_RENDERER", "cairo", FALSE);
  if (!gtk_init_check()) {
    return false;
  }
  // libadwaita warns at each alert that it has no parent window; the wallpaper has none to offer.
  g_log_set_handler(
      "Adwaita", G_LOG_LEVEL_MESSAGE, [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
  adw_init();
  return true;
}

}  // namespace nivlo
