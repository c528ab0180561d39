#include "host/surfaces/wayland/WaylandEvents.hpp"

#include <cerrno>
#include <utility>

#include <fmt/format.h>

namespace nivlo {

namespace {

std::string causeOfEnd(wl_display* display) {
  if (wl_display_get_error(display) != EPROTO) {
    return "the Wayland compositor is gone";
  }
  const wl_interface* interface = nullptr;
  const auto code = wl_display_get_protocol_error(display, &interface, nullptr);
  return fmt::format("the Wayland compositor ended the connection over protocol error {} of {}", code,
                     interface ? interface->name : "an unknown interface");
}

}  // namespace

struct WaylandEvents::Source {
  GSource base;
  WaylandEvents* owner;

  static WaylandEvents& of(GSource* source) { return *reinterpret_cast<Source*>(source)->owner; }
};

WaylandEvents::WaylandEvents(wl_display* display, std::function<void(const std::string&)> lost)
    : display_(display), lost_(std::move(lost)) {
  static GSourceFuncs functions{
      [](GSource* source, gint* timeout) -> gboolean {
        *timeout = -1;
        return Source::of(source).prepare();
      },
      [](GSource* source) -> gboolean { return Source::of(source).check(); },
      [](GSource* source, GSourceFunc, gpointer) -> gboolean { return Source::of(source).dispatch(); },
      nullptr,
      nullptr,
      nullptr};
  source_.reset(g_source_new(&functions, sizeof(Source)));
  reinterpret_cast<Source*>(source_.get())->owner = this;
  descriptor_ = g_source_add_unix_fd(source_.get(), wl_display_get_fd(display),
                                     static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
  // GLib blocks a source that may not recurse while dispatching it, and unblocking wakes the loop once more.
  // Allowing recursion saves that extra round for every event.
  g_source_set_can_recurse(source_.get(), TRUE);
  g_source_attach(source_.get(), nullptr);
}

WaylandEvents::~WaylandEvents() {
  if (reading_) {
    wl_display_cancel_read(display_);
  }
}

/// A loop that is busy with other sources may come back here without a check in between. The read that was
/// prepared the first time then still stands.
bool WaylandEvents::prepare() {
  if (!reading_) {
    if (broken_ || wl_display_prepare_read(display_) != 0) {
      return true;
    }
    reading_ = true;
  }
  wl_display_flush(display_);
  return false;
}

bool WaylandEvents::check() {
  const auto condition = g_source_query_unix_fd(source_.get(), descriptor_);
  if (std::exchange(reading_, false)) {
    if ((condition & G_IO_IN) != 0) {
      broken_ = wl_display_read_events(display_) != 0;
    } else {
      wl_display_cancel_read(display_);
    }
  }
  return condition != 0;
}

bool WaylandEvents::dispatch() {
  const auto condition = g_source_query_unix_fd(source_.get(), descriptor_);
  if (wl_display_dispatch_pending(display_) >= 0 && !broken_ && (condition & (G_IO_HUP | G_IO_ERR)) == 0) {
    return G_SOURCE_CONTINUE;
  }
  lost_(causeOfEnd(display_));
  return G_SOURCE_REMOVE;
}

}  // namespace nivlo
