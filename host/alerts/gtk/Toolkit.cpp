#include "host/alerts/gtk/Toolkit.hpp"

#include <adwaita.h>

namespace nivlo {

namespace {

/// Unless somebody has chosen a renderer, takes the one that does not load the graphics drivers and a
/// compiler for a window of a few words. On X11 they would be loaded all the same, to choose a visual.
void chooseLightRenderer() {
  if (g_getenv("GSK_RENDERER")) {
    return;
  }
  g_setenv("GSK_RENDERER", "cairo", TRUE);
  // GTK 4.14 moved the switch to a variable of its own.
  if (gtk_get_minor_version() < 14) {
    g_setenv("GDK_DEBUG", "gl-disable", FALSE);
  } else {
    g_setenv("GDK_DISABLE", "gl", FALSE);
  }
}

}  // namespace

bool startToolkit() {
  // The program name becomes the application ID by which taskbars find the desktop entry.
  g_set_prgname("nivlo");
  g_set_application_name("Nivlo");
  chooseLightRenderer();
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
