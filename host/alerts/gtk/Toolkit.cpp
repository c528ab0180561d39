#include "host/alerts/gtk/Toolkit.hpp"

#include <adwaita.h>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

bool start() {
  // The program name becomes the application id by which taskbars find the desktop entry.
  g_set_prgname("nivlo");
  g_set_application_name("Nivlo");
  // The locale belongs to the whole program and must not change in the middle of its life.
  gtk_disable_setlocale();
  if (!gtk_init_check()) {
    NSLog(
        "desktop: no Wayland or X11 display answers, so there are no windows; start Nivlo from within the "
        "session");
    return false;
  }
  // libadwaita would say with each alert that it has no parent window; the wallpaper has none to give.
  g_log_set_handler(
      "Adwaita", G_LOG_LEVEL_MESSAGE, [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
  adw_init();
  return true;
}

}  // namespace

bool startToolkit() {
  static const bool started = start();
  return started;
}

}  // namespace nivlo
