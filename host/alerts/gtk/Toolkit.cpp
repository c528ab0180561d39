#include "host/alerts/gtk/Toolkit.hpp"

#include <algorithm>

#include <adwaita.h>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

/// GDK says why its connection to the compositor ended and then ends the process, which may be before the
/// wallpaper's own connection is seen to be gone.
GLogWriterOutput reportLoss(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
  const auto* end = fields + count;
  const auto isGdk = [](const GLogField& field) {
    return g_str_equal(field.key, "GLIB_DOMAIN") && g_str_equal(field.value, "Gdk");
  };
  if ((level & G_LOG_LEVEL_MESSAGE) != 0 && std::find_if(fields, end, isGdk) != end) {
    NSLog("desktop: the Wayland compositor is gone, or ended the dialogs' connection");
  }
  return g_log_writer_default(level, fields, count, data);
}

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
  g_log_set_writer_func(reportLoss, nullptr, nullptr);
  adw_init();
  return true;
}

}  // namespace

bool startToolkit() {
  static const bool started = start();
  return started;
}

}  // namespace nivlo
