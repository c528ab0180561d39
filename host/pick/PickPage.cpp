#include "host/pick/PickPage.hpp"

#include <utility>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

// Pixels. One preset, or two wallpapers, fit beside each other into a phone's 360.
constexpr int kSpace = 12;
constexpr int kPresetWidth = 320;
constexpr int kWallpaperWidth = 150;
constexpr int kWallpaperHeight = 266;  // the shape of a phone's screen
constexpr int kStandInHeight = 200;
constexpr int kIconSize = 64;
constexpr int kGridWidth = 2 * kPresetWidth + 5 * kSpace;

GtkWidget* clamped(GtkWidget* child, int width) {
  auto* clamp = adw_clamp_new();
  adw_clamp_set_maximum_size(ADW_CLAMP(clamp), width);
  adw_clamp_set_tightening_threshold(ADW_CLAMP(clamp), width);
  adw_clamp_set_child(ADW_CLAMP(clamp), child);
  return clamp;
}

/// Null for a picture that cannot be decoded.
Owned<GdkTexture, g_object_unref> textureOf(const std::string& picture) {
  const Owned<GBytes, g_bytes_unref> bytes(g_bytes_new(picture.data(), picture.size()));
  return Owned<GdkTexture, g_object_unref>(gdk_texture_new_from_bytes(bytes.get(), nullptr));
}

GtkWidget* decodedPicture(const PickEntry& entry, PickPictures pictures) {
  const auto texture = textureOf(entry.picture);
  if (!texture) {
    return nullptr;
  }
  auto* picture = gtk_picture_new_for_paintable(GDK_PAINTABLE(texture.get()));
  gtk_picture_set_alternative_text(GTK_PICTURE(picture), entry.words.c_str());
  if (pictures == PickPictures::Wallpapers) {
    gtk_picture_set_content_fit(GTK_PICTURE(picture), GTK_CONTENT_FIT_COVER);
  }
  return picture;
}

GtkWidget* standInPicture() {
  auto* icon = gtk_image_new_from_icon_name("image-x-generic-symbolic");
  gtk_image_set_pixel_size(GTK_IMAGE(icon), kIconSize);
  gtk_widget_add_css_class(icon, "dim-label");
  gtk_widget_set_size_request(icon, -1, kStandInHeight);
  return icon;
}

GtkWidget* pictureOf(const PickEntry& entry, PickPictures pictures) {
  auto* decoded = decodedPicture(entry, pictures);
  auto* picture = decoded ? decoded : standInPicture();
  if (pictures == PickPictures::Wallpapers) {
    gtk_widget_set_size_request(picture, kWallpaperWidth, kWallpaperHeight);
  }
  gtk_widget_set_overflow(picture, GTK_OVERFLOW_HIDDEN);
  gtk_widget_add_css_class(picture, "card");
  return picture;
}

}  // namespace

PickPage::PickPage(const std::vector<PickEntry>& entries, PickPictures pictures,
                   std::function<void(int)> picked)
    : grid_(GTK_FLOW_BOX(gtk_flow_box_new())),
      scroller_(gtk_scrolled_window_new()),
      picked_(std::move(picked)) {
  const bool presets = pictures == PickPictures::Presets;
  gtk_flow_box_set_selection_mode(grid_, GTK_SELECTION_NONE);
  gtk_flow_box_set_min_children_per_line(grid_, presets ? 1 : 2);
  gtk_flow_box_set_max_children_per_line(grid_, presets ? 2 : 4);
  gtk_flow_box_set_homogeneous(grid_, TRUE);
  gtk_flow_box_set_row_spacing(grid_, kSpace);
  gtk_widget_set_valign(GTK_WIDGET(grid_), GTK_ALIGN_START);
  for (const auto set : {gtk_widget_set_margin_start, gtk_widget_set_margin_end, gtk_widget_set_margin_top,
                         gtk_widget_set_margin_bottom}) {
    set(GTK_WIDGET(grid_), kSpace);
  }
  for (const auto& entry : entries) {
    add(entry, pictures);
  }
  g_signal_connect(grid_, "child-activated",
                   G_CALLBACK(+[](GtkFlowBox*, GtkFlowBoxChild* child, gpointer self) {
                     static_cast<PickPage*>(self)->picked_(gtk_flow_box_child_get_index(child) + 1);
                   }),
                   this);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller_), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
  gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller_), clamped(GTK_WIDGET(grid_), kGridWidth));
  // Pictures scroll in their natural height rather than shrink.
  gtk_scrollable_set_vscroll_policy(
      GTK_SCROLLABLE(gtk_scrolled_window_get_child(GTK_SCROLLED_WINDOW(scroller_))), GTK_SCROLL_NATURAL);
  gtk_widget_set_vexpand(scroller_, TRUE);
}

void PickPage::add(const PickEntry& entry, PickPictures pictures) {
  auto* words = gtk_label_new(entry.words.c_str());
  gtk_label_set_wrap(GTK_LABEL(words), TRUE);
  gtk_label_set_xalign(GTK_LABEL(words), 0);
  gtk_widget_set_hexpand(words, TRUE);
  auto* mark = gtk_image_new_from_icon_name("object-select-symbolic");
  gtk_widget_add_css_class(mark, "accent");
  gtk_widget_set_opacity(mark, 0);
  marks_.push_back(mark);
  auto* caption = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kSpace / 2);
  gtk_box_append(GTK_BOX(caption), words);
  gtk_box_append(GTK_BOX(caption), mark);
  auto* tile = gtk_box_new(GTK_ORIENTATION_VERTICAL, kSpace / 2);
  gtk_box_append(GTK_BOX(tile), pictureOf(entry, pictures));
  gtk_box_append(GTK_BOX(tile), caption);
  gtk_flow_box_append(grid_,
                      clamped(tile, pictures == PickPictures::Presets ? kPresetWidth : kWallpaperWidth));
}

void PickPage::mark(int chosen) {
  int number = 0;
  for (auto* mark : marks_) {
    gtk_widget_set_opacity(mark, ++number == chosen ? 1 : 0);
  }
}

}  // namespace nivlo
