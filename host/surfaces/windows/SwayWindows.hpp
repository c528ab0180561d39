// The windows of sway.
#pragma once

#include <memory>
#include <string>

#include "host/surfaces/windows/LocalSocket.hpp"
#include "host/surfaces/windows/SwayMessages.hpp"
#include "host/surfaces/windows/WindowSource.hpp"

namespace nivlo {

/// Speaks sway-ipc(7). Main thread only.
class SwayWindows : public WindowSource {
 public:
  /// Connects to the socket at `path`; see OpenWindowSource.
  static std::unique_ptr<WindowSource> open(const std::string& path, Handlers handlers, std::string* error);

  void ask() override;

 private:
  explicit SwayWindows(Handlers handlers) : handlers_(std::move(handlers)) {}
  void received(std::string_view bytes);
  void handle(SwayMessage type, std::string_view payload);
  void end(const std::string& cause);

  Handlers handlers_;
  std::unique_ptr<LocalSocket> socket_;
  SwayMessages messages_;
  bool ended_ = false;
};

}  // namespace nivlo
