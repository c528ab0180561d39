#include "host/alerts/gtk/Clipboard.hpp"

#include <array>
#include <utility>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

/// The type names under which programs ask for text: those of Wayland and the web, then those of X11.
constexpr std::array kTextTypes{"text/plain;charset=utf-8", "text/plain", "UTF8_STRING", "STRING", "TEXT"};

}  // namespace

Clipboard::Clipboard() : clipboard_(gdk_display_get_clipboard(gdk_display_get_default())) {
  g_signal_connect_swapped(clipboard_, "changed",
                           G_CALLBACK(+[](gpointer self) { static_cast<Clipboard*>(self)->check(); }), this);
}

Clipboard::~Clipboard() { g_signal_handlers_disconnect_by_data(clipboard_, this); }

void Clipboard::offer(const std::string& text) {
  const Owned<GBytes, g_bytes_unref> bytes(g_bytes_new(text.data(), text.size()));
  std::array<GdkContentProvider*, kTextTypes.size()> offers;
  for (std::size_t i = 0; i < kTextTypes.size(); ++i) {
    offers[i] = gdk_content_provider_new_for_bytes(kTextTypes[i], bytes.get());
  }
  const Owned<GdkContentProvider, g_object_unref> content(
      gdk_content_provider_new_union(offers.data(), offers.size()));
  gdk_clipboard_set_content(clipboard_, content.get());
}

void Clipboard::whenUnneeded(std::function<void()> unneeded) {
  unneeded_ = std::move(unneeded);
  if (gdk_clipboard_is_local(clipboard_)) {
    // X11's clipboard managers take the content over when they are asked to; Wayland's do so unasked.
    gdk_clipboard_store_async(
        clipboard_, G_PRIORITY_DEFAULT, nullptr,
        [](GObject* clipboard, GAsyncResult* result, gpointer self) {
          if (gdk_clipboard_store_finish(GDK_CLIPBOARD(clipboard), result, nullptr)) {
            static_cast<Clipboard*>(self)->unneeded_();
          }
        },
        this);
  }
  check();
}

void Clipboard::check() {
  if (unneeded_ && !gdk_clipboard_is_local(clipboard_)) {
    unneeded_();
  }
}

}  // namespace nivlo
