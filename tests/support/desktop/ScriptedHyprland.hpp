// Hyprland's two sockets, with answers that a test chooses.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <gio/gunixsocketaddress.h>

#include "linux/handles/Owned.hpp"

namespace nivlo::test {

/// Serves the sockets in a folder from the test's own main loop for as long as it lives: each request gets
/// its answer, and the connection is then closed. The constructor throws std::runtime_error if it cannot
/// listen. Main thread only.
class ScriptedHyprland {
 public:
  explicit ScriptedHyprland(const std::filesystem::path& folder) {
    listen(requests_, folder / ".socket.sock", G_CALLBACK(onRequest));
    listen(events_, folder / ".socket2.sock", G_CALLBACK(onListener));
  }

  /// By request; an empty answer keeps the connection open, as if Hyprland hung.
  std::map<std::string, std::string> answers;
  std::vector<std::string> received;  ///< the requests so far

  /// Sends text to all who listen to events.
  void emit(const std::string& text) {
    for (const auto& listener : listeners_) {
      g_output_stream_write_all(g_io_stream_get_output_stream(listener.get()), text.data(), text.size(),
                                nullptr, nullptr, nullptr);
    }
  }

  /// Closes the connections of all who listen to events.
  void hangUp() {
    for (const auto& listener : listeners_) {
      g_io_stream_close(listener.get(), nullptr, nullptr);
    }
    listeners_.clear();
  }

 private:
  using Service = Owned<GSocketService, g_object_unref>;
  using Stream = Owned<GIOStream, g_object_unref>;

  void listen(Service& service, const std::filesystem::path& path, GCallback handler) {
    std::filesystem::remove(path);
    service.reset(g_socket_service_new());
    const Owned<GSocketAddress, g_object_unref> address(g_unix_socket_address_new(path.c_str()));
    if (!g_socket_listener_add_address(G_SOCKET_LISTENER(service.get()), address.get(), G_SOCKET_TYPE_STREAM,
                                       G_SOCKET_PROTOCOL_DEFAULT, nullptr, nullptr, nullptr)) {
      throw std::runtime_error("cannot listen at " + path.string());
    }
    g_signal_connect(service.get(), "incoming", handler, this);
  }

  static gboolean onRequest(GSocketService*, GSocketConnection* connection, GObject*,
                            ScriptedHyprland* self) {
    auto* stream = G_IO_STREAM(connection);
    std::array<char, 256> request{};
    const auto length = g_input_stream_read(g_io_stream_get_input_stream(stream), request.data(),
                                            request.size(), nullptr, nullptr);
    self->received.emplace_back(request.data(), length > 0 ? length : 0);
    const auto& answer = self->answers[self->received.back()];
    if (answer.empty()) {
      self->hung_.emplace_back(G_IO_STREAM(g_object_ref(stream)));
    } else {
      g_output_stream_write_all(g_io_stream_get_output_stream(stream), answer.data(), answer.size(), nullptr,
                                nullptr, nullptr);
    }
    return TRUE;
  }

  static gboolean onListener(GSocketService*, GSocketConnection* connection, GObject*,
                             ScriptedHyprland* self) {
    self->listeners_.emplace_back(G_IO_STREAM(g_object_ref(connection)));
    return TRUE;
  }

  std::vector<Stream> listeners_, hung_;
  Service requests_, events_;
};

}  // namespace nivlo::test
