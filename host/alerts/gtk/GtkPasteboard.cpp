#include "host/alerts/gtk/GtkPasteboard.hpp"

#include <array>
#include <utility>

#include <gtk/gtk.h>

#include "host/alerts/gtk/Toolkit.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

/// The type names under which programs ask for text: those of Wayland and the web, then those of X11.
constexpr std::array kTextTypes{"text/plain;charset=utf-8", "text/plain", "UTF8_STRING", "STRING", "TEXT"};

class GtkPasteboard : public PasteboardDriver {
 public:
  explicit GtkPasteboard(std::unique_ptr<PasteboardDriver> fallback) : fallback_(std::move(fallback)) {}

  void setString(const std::string& text) override {
    if (!startToolkit()) {
      fallback_->setString(text);
      return;
    }
    const Owned<GBytes, g_bytes_unref> bytes(g_bytes_new(text.data(), text.size()));
    std::array<GdkContentProvider*, kTextTypes.size()> offers;
    for (std::size_t i = 0; i < kTextTypes.size(); ++i) {
      offers[i] = gdk_content_provider_new_for_bytes(kTextTypes[i], bytes.get());
    }
    const Owned<GdkContentProvider, g_object_unref> content(
        gdk_content_provider_new_union(offers.data(), offers.size()));
    gdk_clipboard_set_content(gdk_display_get_clipboard(gdk_display_get_default()), content.get());
  }

 private:
  std::unique_ptr<PasteboardDriver> fallback_;
};

}  // namespace

std::unique_ptr<PasteboardDriver> makeGtkPasteboard(std::unique_ptr<PasteboardDriver> fallback) {
  return std::make_unique<GtkPasteboard>(std::move(fallback));
}

}  // namespace nivlo
