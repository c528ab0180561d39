// nivlo-test-window RRGGBB: an opaque window of one colour with the title "foreign", standing for another
// program's.
#include <string>

#include <gtk/gtk.h>

int main(int count, char** arguments) {
  if (count != 2 || !gtk_init_check()) {
    return 1;
  }
  auto* style = gtk_css_provider_new();
  const auto css = std::string("window { background: #") + arguments[1] + "; }";
  gtk_css_provider_load_from_data(style, css.c_str(), static_cast<gssize>(css.size()));
  gtk_style_context_add_provider_for_display(gdk_display_get_default(), GTK_STYLE_PROVIDER(style),
                                             GTK_STYLE_PROVIDER_PRIORITY_USER);
  auto* window = gtk_window_new();
  gtk_window_set_title(GTK_WINDOW(window), "foreign");
  gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
  g_signal_connect(window, "map", G_CALLBACK(+[] { g_print("mapped\n"); }), nullptr);
  gtk_window_present(GTK_WINDOW(window));
  g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
