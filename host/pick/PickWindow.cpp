#include "host/pick/PickWindow.hpp"

#include <utility>

namespace nivlo {

namespace {

// Pixels.
constexpr int kWindowWidth = 700;
constexpr int kWindowHeight = 560;

GtkShortcut* shortcut(guint key, GdkModifierType modifiers, GtkShortcutFunc perform, gpointer data) {
  return gtk_shortcut_new(gtk_keyval_trigger_new(key, modifiers),
                          gtk_callback_action_new(perform, data, nullptr));
}

}  // namespace

PickWindow::PickWindow(std::vector<PickWallpaper> wallpapers, PickedPreset shown,
                       std::function<std::string(PickedPreset)> choose, std::function<void()> closed)
    : window_(GTK_WINDOW(g_object_ref_sink(adw_window_new()))),
      messages_(ADW_TOAST_OVERLAY(adw_toast_overlay_new())),
      pages_(ADW_LEAFLET(adw_leaflet_new())),
      all_(std::move(wallpapers)),
      shown_(shown),
      choose_(std::move(choose)),
      closed_(std::move(closed)) {
  build();
  if (all_.size() == 1) {
    openPresets(1);
  } else {
    openWallpapers();
  }
  g_signal_connect(window_.get(), "close-request", G_CALLBACK(+[](GtkWindow*, gpointer self) -> gboolean {
                     static_cast<PickWindow*>(self)->closed_();
                     return GDK_EVENT_STOP;
                   }),
                   this);
  gtk_window_present(window_.get());
}

PickWindow::~PickWindow() { gtk_window_destroy(window_.get()); }

void PickWindow::build() {
  adw_leaflet_set_can_unfold(pages_, FALSE);
  adw_leaflet_set_can_navigate_back(pages_, TRUE);
  adw_toast_overlay_set_child(messages_, GTK_WIDGET(pages_));
  adw_window_set_content(ADW_WINDOW(window_.get()), GTK_WIDGET(messages_));
  gtk_window_set_title(window_.get(), g_get_application_name());
  gtk_window_set_default_size(window_.get(), kWindowWidth, kWindowHeight);
  auto* shortcuts = gtk_shortcut_controller_new();
  const auto add = [&](guint key, GdkModifierType modifiers, GtkShortcutFunc perform) {
    gtk_shortcut_controller_add_shortcut(GTK_SHORTCUT_CONTROLLER(shortcuts),
                                         shortcut(key, modifiers, perform, this));
  };
  add(GDK_KEY_Left, GDK_ALT_MASK, [](GtkWidget*, GVariant*, gpointer self) -> gboolean {
    return static_cast<PickWindow*>(self)->goBack();
  });
  add(GDK_KEY_Escape, {}, [](GtkWidget* window, GVariant*, gpointer self) -> gboolean {
    if (!static_cast<PickWindow*>(self)->goBack()) {
      gtk_window_close(GTK_WINDOW(window));
    }
    return TRUE;
  });
  gtk_widget_add_controller(GTK_WIDGET(window_.get()), shortcuts);
}

GtkWidget* PickWindow::framed(const PickPage& page, const std::string& title, bool hasWayBack) {
  auto* header = adw_header_bar_new();
  adw_header_bar_set_title_widget(ADW_HEADER_BAR(header), adw_window_title_new(title.c_str(), ""));
  if (hasWayBack) {
    auto* back = gtk_button_new_from_icon_name("go-previous-symbolic");
    gtk_widget_set_tooltip_text(back, "Back to the wallpapers");
    g_signal_connect(back, "clicked",
                     G_CALLBACK(+[](GtkButton*, gpointer self) { static_cast<PickWindow*>(self)->goBack(); }),
                     this);
    adw_header_bar_pack_start(ADW_HEADER_BAR(header), back);
  }
  auto* frame = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  gtk_box_append(GTK_BOX(frame), header);
  gtk_box_append(GTK_BOX(frame), page.widget());
  return frame;
}

void PickWindow::openWallpapers() {
  std::vector<PickEntry> entries;
  for (const auto& wallpaper : all_) {
    entries.push_back(wallpaper.entry);
  }
  wallpapers_ = std::make_unique<PickPage>(entries, PickPictures::Wallpapers,
                                           [this](int picked) { openPresets(picked); });
  adw_leaflet_append(pages_, framed(*wallpapers_, "Wallpapers", false));
  markShown();
}

void PickWindow::openPresets(int wallpaper) {
  if (presetsWidget_) {
    adw_leaflet_remove(pages_, presetsWidget_);
  }
  opened_ = wallpaper;
  const auto& [entry, presets] = all_.at(static_cast<std::size_t>(wallpaper - 1));
  presets_ = std::make_unique<PickPage>(presets, PickPictures::Presets, [this, wallpaper](int picked) {
    pick({.wallpaper = wallpaper, .preset = picked});
  });
  presetsWidget_ = framed(*presets_, entry.words, wallpapers_ != nullptr);
  adw_leaflet_append(pages_, presetsWidget_);
  adw_leaflet_set_visible_child(pages_, presetsWidget_);
  gtk_widget_child_focus(presets_->widget(), GTK_DIR_TAB_FORWARD);
  markShown();
}

bool PickWindow::goBack() { return adw_leaflet_navigate(pages_, ADW_NAVIGATION_DIRECTION_BACK) != FALSE; }

void PickWindow::pick(PickedPreset picked) {
  const auto error = choose_(picked);
  if (error.empty()) {
    shown_ = picked;
    markShown();
    return;
  }
  auto* message = adw_toast_new("");
  const Owned<char, g_free> escaped(g_markup_escape_text(error.c_str(), -1));
  adw_toast_set_title(message, escaped.get());
  adw_toast_overlay_add_toast(messages_, message);
}

void PickWindow::markShown() {
  if (wallpapers_) {
    wallpapers_->mark(shown_.wallpaper);
  }
  if (presets_) {
    presets_->mark(shown_.wallpaper == opened_ ? shown_.preset : 0);
  }
}

}  // namespace nivlo
