#include "host/loop/EventSource.hpp"

#include <utility>

#include <glib-unix.h>

namespace nivlo {

namespace {

using Handler = std::function<void()>;

gboolean callAndKeep(gpointer data) {
  (*static_cast<Handler*>(data))();
  return G_SOURCE_CONTINUE;
}

gboolean callAndEnd(gpointer data) {
  (*static_cast<Handler*>(data))();
  return G_SOURCE_REMOVE;
}

gboolean callForDescriptor(gint, GIOCondition, gpointer data) { return callAndKeep(data); }

}  // namespace

EventSource::EventSource(GSource* source, Handler handler, GSourceFunc call) : source_(source) {
  g_source_set_callback(source_, call, new Handler(std::move(handler)),
                        [](gpointer data) { delete static_cast<Handler*>(data); });
  g_source_attach(source_, nullptr);
}

EventSource::~EventSource() {
  if (source_) {
    g_source_destroy(source_);
    g_source_unref(source_);
  }
}

EventSource::EventSource(EventSource&& other) noexcept : source_(std::exchange(other.source_, nullptr)) {}

EventSource& EventSource::operator=(EventSource&& other) noexcept {
  std::swap(source_, other.source_);
  return *this;
}

EventSource EventSource::onSignal(int signal, Handler handler) {
  return EventSource(g_unix_signal_source_new(signal), std::move(handler), callAndKeep);
}

EventSource EventSource::onReadable(int descriptor, Handler handler) {
  return EventSource(
      g_unix_fd_source_new(descriptor, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR)),
      std::move(handler), G_SOURCE_FUNC(callForDescriptor));
}

EventSource EventSource::onTimeout(std::chrono::milliseconds delay, Handler handler) {
  return EventSource(g_timeout_source_new(static_cast<guint>(delay.count())), std::move(handler), callAndEnd);
}

}  // namespace nivlo
