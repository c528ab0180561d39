#include "host/alerts/gtk/DialogWindows.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace nivlo {

namespace {

/// Keeps the window when somebody closes it. The dialog's own handler runs first and counts the closing as an
/// answer.
gboolean stay(GtkWindow*, gpointer) { return TRUE; }

}  // namespace

DialogWindow DialogWindows::take(std::size_t buttons) {
  const auto fitting = std::find_if(kept_.begin(), kept_.end(),
                                    [buttons](const Kept& kept) { return kept.buttons == buttons; });
  if (fitting != kept_.end()) {
    auto window = std::move(fitting->window);
    kept_.erase(fitting);
    return window;
  }
  auto* fresh = ADW_MESSAGE_DIALOG(g_object_ref_sink(adw_message_dialog_new(nullptr, nullptr, nullptr)));
  for (std::size_t i = 0; i < buttons; ++i) {
    adw_message_dialog_add_response(fresh, std::to_string(i).c_str(), "");
  }
  g_signal_connect_after(fresh, "close-request", G_CALLBACK(stay), nullptr);
  return DialogWindow(fresh);
}

void DialogWindows::giveBack(DialogWindow window, std::size_t buttons) {
  gtk_widget_set_visible(GTK_WIDGET(window.get()), FALSE);
  // Otherwise GTK would look for a new widget to focus later, perhaps after the next dialog has chosen one.
  gtk_window_set_focus(GTK_WINDOW(window.get()), nullptr);
  adw_message_dialog_set_extra_child(window.get(), nullptr);
  kept_.push_back({std::move(window), buttons});
}

}  // namespace nivlo
