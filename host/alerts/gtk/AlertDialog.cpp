#include "host/alerts/gtk/AlertDialog.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "host/alerts/gtk/ForeignText.hpp"
#include "host/text/VisibleText.hpp"

namespace nivlo {

namespace {

constexpr int kLineLength = 48;       // characters
constexpr int kWidestMessage = 440;   // pixels
constexpr int kTallestMessage = 360;  // pixels
// Pixels that a dialog needs around its message when the title takes two lines and the buttons are stacked.
constexpr int kFrameWidth = 80;
constexpr int kFrameHeight = 280;

struct Size {
  int width;
  int height;
};

/// The largest message with which the buttons still fit on the smallest screen: the desktop chooses the
/// screen.
Size largestMessage() {
  Size size{kWidestMessage, kTallestMessage};
  auto* monitors = gdk_display_get_monitors(gdk_display_get_default());
  for (guint i = 0; i < g_list_model_get_n_items(monitors); ++i) {
    const Owned<GdkMonitor, g_object_unref> monitor(
        static_cast<GdkMonitor*>(g_list_model_get_item(monitors, i)));
    GdkRectangle place;
    gdk_monitor_get_geometry(monitor.get(), &place);
    size.width = std::min(size.width, place.width - kFrameWidth);
    size.height = std::min(size.height, place.height - kFrameHeight);
  }
  return {std::max(size.width, 1), std::max(size.height, 1)};
}

/// Doubles underscores, because a single one in a button's label marks the next letter as a shortcut.
std::string buttonLabel(const std::string& text) {
  std::string label;
  for (const char c : visibleText(text)) {
    label += c == '_' ? "__" : std::string(1, c);
  }
  return label;
}

/// Copies what is selected as it was scanned, in place of GTK's own handler.
void copySelection(GtkLabel* label, gpointer text) {
  int first = 0;
  int last = 0;
  if (gtk_label_get_selection_bounds(label, &first, &last)) {
    const auto& foreign = *static_cast<const LabelText*>(text);
    const auto* start = foreign.text.c_str();
    const auto place = [start](int character) {
      return static_cast<std::size_t>(g_utf8_offset_to_pointer(start, character) - start);
    };
    gdk_clipboard_set_text(gtk_widget_get_clipboard(GTK_WIDGET(label)),
                           withoutAdditions(foreign, {place(first), place(last)}).c_str());
  }
  g_signal_stop_emission_by_name(label, "copy-clipboard");
}

GtkWidget* messageLabel(const std::string& message) {
  auto* foreign = new LabelText(foreignText(message));
  auto* label = gtk_label_new(foreign->text.c_str());
  gtk_label_set_attributes(GTK_LABEL(label), foreign->attributes.get());
  g_signal_connect_data(label, "copy-clipboard", G_CALLBACK(copySelection), foreign,
                        [](gpointer text, GClosure*) { delete static_cast<LabelText*>(text); }, {});
  gtk_label_set_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_selectable(GTK_LABEL(label), TRUE);
  gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  gtk_label_set_max_width_chars(GTK_LABEL(label), kLineLength);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
  return label;
}

/// Requests the size of the label's text for its scroller, up to the largest message. Without a request the
/// dialog would give the scroller the least room that it can do with.
void fit(GtkWidget* scroller, GtkWidget* label) {
  const auto largest = largestMessage();
  int width = 0;
  gtk_widget_measure(label, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, &width, nullptr, nullptr);
  width = std::min(width, largest.width);
  int height = 0;
  gtk_widget_measure(label, GTK_ORIENTATION_VERTICAL, width, nullptr, &height, nullptr, nullptr);
  gtk_widget_set_size_request(scroller, width, std::min(height, largest.height));
}

void addMessage(AdwMessageDialog* window, const std::string& message) {
  auto* label = messageLabel(message);
  auto* scroller = gtk_scrolled_window_new();
  gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller), label);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
  // The scroll bar stays visible, so that nobody mistakes the first part of a text for all of it.
  gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(scroller), FALSE);
  // A dialog may appear while somebody is typing, so the first focus is not on a button but on the text.
  gtk_widget_set_focusable(scroller, TRUE);
  adw_message_dialog_set_extra_child(window, scroller);
  gtk_window_set_focus(GTK_WINDOW(window), scroller);
  fit(scroller, label);
}

/// Keeps the window when somebody closes it. The dialog's own handler runs first and counts the closing as an
/// answer.
gboolean stay(GtkWindow*, gpointer) { return TRUE; }

}  // namespace

AlertDialog::AlertDialog(const AlertContent& content, Answered answered)
    : disabledButton_(content.disabledButtonIndex),
      window_(ADW_MESSAGE_DIALOG(g_object_ref_sink(adw_message_dialog_new(nullptr, nullptr, nullptr)))),
      answered_(std::move(answered)) {
  auto* window = window_.get();
  adw_message_dialog_set_heading(window, visibleText(content.title).c_str());
  addMessage(window, content.message);
  for (std::size_t i = 0; i < content.buttons.size(); ++i) {
    const auto response = std::to_string(i);
    adw_message_dialog_add_response(window, response.c_str(), buttonLabel(content.buttons[i]).c_str());
    adw_message_dialog_set_response_enabled(window, response.c_str(),
                                            static_cast<long>(i) != disabledButton_);
  }
  const auto closing = content.cancelButtonIndex >= 0 ? content.cancelButtonIndex
                                                      : static_cast<long>(content.buttons.size()) - 1;
  adw_message_dialog_set_close_response(window, std::to_string(closing).c_str());
  g_signal_connect(window, "response", G_CALLBACK(respond), this);
  g_signal_connect_after(window, "close-request", G_CALLBACK(stay), nullptr);
  gtk_window_set_title(GTK_WINDOW(window), g_get_application_name());
  gtk_window_set_modal(GTK_WINDOW(window), TRUE);
  gtk_window_present(GTK_WINDOW(window));
}

AlertDialog::~AlertDialog() {
  g_signal_handlers_disconnect_by_data(window_.get(), this);
  gtk_window_destroy(GTK_WINDOW(window_.get()));
}

void AlertDialog::respond(AdwMessageDialog*, const char* response, gpointer self) {
  auto& dialog = *static_cast<AlertDialog*>(self);
  const auto button = std::stol(response);
  const bool pressed = button >= 0 && button != dialog.disabledButton_;
  if (const auto answered = std::exchange(dialog.answered_, nullptr)) {
    answered(pressed ? std::optional(button) : std::nullopt);
  }
}

}  // namespace nivlo
