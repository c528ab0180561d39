#include "host/pick/PickWindow.hpp"

#include <utility>

namespace nivlo {

namespace {

// Pixels. One tile fits a phone's width of 360.
constexpr int kTileWidth = 320;
constexpr int kSpace = 12;
constexpr int kWindowWidth = 2 * kTileWidth + 5 * kSpace;
constexpr int kWindowHeight = 560;

GtkWidget* clamped(GtkWidget* child, int width) {
  auto* clamp = adw_clamp_new();
  adw_clamp_set_maximum_size(ADW_CLAMP(clamp), width);
  adw_clamp_set_tightening_threshold(ADW_CLAMP(clamp), width);
  adw_clamp_set_child(ADW_CLAMP(clamp), child);
  return clamp;
}

Owned<GdkTexture, g_object_unref> textureOf(const UIImage& image) {
  const auto& data = image.data();
  const Owned<GBytes, g_bytes_unref> bytes(g_bytes_new(data.data(), data.size()));
  return Owned<GdkTexture, g_object_unref>(gdk_texture_new_from_bytes(bytes.get(), nullptr));
}

GtkWidget* pictureOf(const PickEntry& entry) {
  const auto texture = entry.picture ? textureOf(*entry.picture) : nullptr;
  auto* picture = gtk_picture_new_for_paintable(GDK_PAINTABLE(texture.get()));
  gtk_picture_set_alternative_text(GTK_PICTURE(picture), entry.words.c_str());
  gtk_widget_set_overflow(picture, GTK_OVERFLOW_HIDDEN);
  gtk_widget_add_css_class(picture, "card");
  return picture;
}

void closeOnEscape(GtkWidget* window) {
  auto* shortcuts = gtk_shortcut_controller_new();
  gtk_shortcut_controller_add_shortcut(
      GTK_SHORTCUT_CONTROLLER(shortcuts),
      gtk_shortcut_new(gtk_keyval_trigger_new(GDK_KEY_Escape, {}), gtk_named_action_new("window.close")));
  gtk_widget_add_controller(window, shortcuts);
}

}  // namespace

PickWindow::PickWindow(const std::vector<PickEntry>& entries, int chosen,
                       std::function<std::string(int)> choose, std::function<void()> closed)
    : window_(GTK_WINDOW(g_object_ref_sink(adw_window_new()))),
      messages_(ADW_TOAST_OVERLAY(adw_toast_overlay_new())),
      grid_(GTK_FLOW_BOX(gtk_flow_box_new())),
      choose_(std::move(choose)),
      closed_(std::move(closed)) {
  build(entries);
  mark(chosen);
  g_signal_connect(grid_, "child-activated",
                   G_CALLBACK(+[](GtkFlowBox*, GtkFlowBoxChild* child, gpointer self) {
                     static_cast<PickWindow*>(self)->pick(gtk_flow_box_child_get_index(child) + 1);
                   }),
                   this);
  g_signal_connect(window_.get(), "close-request", G_CALLBACK(+[](GtkWindow*, gpointer self) -> gboolean {
                     static_cast<PickWindow*>(self)->closed_();
                     return GDK_EVENT_STOP;
                   }),
                   this);
  gtk_window_present(window_.get());
}

PickWindow::~PickWindow() { gtk_window_destroy(window_.get()); }

void PickWindow::build(const std::vector<PickEntry>& entries) {
  gtk_flow_box_set_selection_mode(grid_, GTK_SELECTION_NONE);
  gtk_flow_box_set_max_children_per_line(grid_, 2);
  gtk_flow_box_set_homogeneous(grid_, TRUE);
  gtk_flow_box_set_row_spacing(grid_, kSpace);
  gtk_widget_set_valign(GTK_WIDGET(grid_), GTK_ALIGN_START);
  for (const auto set : {gtk_widget_set_margin_start, gtk_widget_set_margin_end, gtk_widget_set_margin_top,
                         gtk_widget_set_margin_bottom}) {
    set(GTK_WIDGET(grid_), kSpace);
  }
  for (const auto& entry : entries) {
    add(entry);
  }
  auto* scroller = gtk_scrolled_window_new();
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
  gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller), clamped(GTK_WIDGET(grid_), kWindowWidth));
  // Pictures scroll in their natural height rather than shrink.
  gtk_scrollable_set_vscroll_policy(
      GTK_SCROLLABLE(gtk_scrolled_window_get_child(GTK_SCROLLED_WINDOW(scroller))), GTK_SCROLL_NATURAL);
  gtk_widget_set_vexpand(scroller, TRUE);
  adw_toast_overlay_set_child(messages_, scroller);
  auto* content = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  gtk_box_append(GTK_BOX(content), adw_header_bar_new());
  gtk_box_append(GTK_BOX(content), GTK_WIDGET(messages_));
  adw_window_set_content(ADW_WINDOW(window_.get()), content);
  gtk_window_set_title(window_.get(), g_get_application_name());
  gtk_window_set_default_size(window_.get(), kWindowWidth, kWindowHeight);
  closeOnEscape(GTK_WIDGET(window_.get()));
}

void PickWindow::add(const PickEntry& entry) {
  auto* words = gtk_label_new(entry.words.c_str());
  gtk_label_set_wrap(GTK_LABEL(words), TRUE);
  gtk_label_set_xalign(GTK_LABEL(words), 0);
  gtk_widget_set_hexpand(words, TRUE);
  auto* mark = gtk_image_new_from_icon_name("object-select-symbolic");
  gtk_widget_add_css_class(mark, "accent");
  marks_.push_back(mark);
  auto* caption = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kSpace / 2);
  gtk_box_append(GTK_BOX(caption), words);
  gtk_box_append(GTK_BOX(caption), mark);
  auto* tile = gtk_box_new(GTK_ORIENTATION_VERTICAL, kSpace / 2);
  gtk_box_append(GTK_BOX(tile), pictureOf(entry));
  gtk_box_append(GTK_BOX(tile), caption);
  gtk_flow_box_append(grid_, clamped(tile, kTileWidth));
}

void PickWindow::mark(int chosen) {
  int number = 0;
  for (auto* mark : marks_) {
    gtk_widget_set_opacity(mark, ++number == chosen ? 1 : 0);
  }
}

void PickWindow::pick(int picked) {
  const auto error = choose_(picked);
  if (error.empty()) {
    mark(picked);
    return;
  }
  auto* message = adw_toast_new("");
  const Owned<char, g_free> escaped(g_markup_escape_text(error.c_str(), -1));
  adw_toast_set_title(message, escaped.get());
  adw_toast_overlay_add_toast(messages_, message);
}

}  // namespace nivlo
