#include "host/alerts/gtk/Toolkit.hpp"

#include <algorithm>

#include <adwaita.h>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

/// When GDK loses the compositor it logs why and ends the process, often before the wallpaper's own
/// connection notices. This is the only chance to log the loss ourselves.
GLogWriterOutput reportLoss(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
  const auto* end = fields + count;
  const auto isGdk = [](const GLogField& field) {
    return g_str_equal(field.key, "GLIB_DOMAIN") && g_str_equal(field.value, "Gdk");
  };
  if ((level & G_LOG_LEVEL_MESSAGE) != 0 && std::find_if(fields, end, isGdk) != end) {
    NSLog("desktop: the Wayland compositor is gone, or has closed the dialogs' connection");
  }
  return g_log_writer_default(level, fields, count, data);
}

bool start() {
  // The program name becomes the application ID by which taskbars find the desktop entry.
  g_set_prgname("nivlo");
  g_set_application_name("Nivlo");
  // The locale belongs to the whole program, and other threads may be reading it by now.
  gtk_disable_setlocale();
  if (!gtk_init_check()) {
    NSLog(
        "desktop: no Wayland or X11 display can be reached, so no dialogs can be shown; start Nivlo from "
        "within the desktop session");
    return false;
  }
  // libadwaita warns at each alert that it has no parent window; the wallpaper has none to offer.
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
