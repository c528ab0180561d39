// The windows of Hyprland.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/surfaces/windows/LocalSocket.hpp"
#include "host/surfaces/windows/WindowSource.hpp"

namespace nivlo {

/// Listens to one of Hyprland's sockets and sends requests to the other (https://wiki.hypr.land/IPC/).
/// Hyprland does nothing else while it waits for a request, so each is sent as soon as the connection is
/// there. Main thread only.
class HyprlandWindows : public WindowSource {
 public:
  /// Connects to the sockets in `folder`; see OpenWindowSource.
  static std::unique_ptr<WindowSource> open(std::string folder, Handlers handlers, std::string* error);

  void ask() override;

 private:
  HyprlandWindows(std::string folder, Handlers handlers)
      : folder_(std::move(folder)), handlers_(std::move(handlers)) {}
  void request(std::unique_ptr<LocalSocket>& socket, std::string_view command,
               std::function<void()> answered);
  void answersCame();
  void received(std::string_view events);
  void end(const std::string& cause);

  std::string folder_;
  Handlers handlers_;
  std::unique_ptr<LocalSocket> events_;
  std::string line_;  ///< the event that has come only in part
  // One for each request, because the first is still in use when the second is opened.
  std::unique_ptr<LocalSocket> monitorsRequest_, clientsRequest_;
  std::string answer_;  ///< to the last request, so far
  std::string monitors_;
  bool ended_ = false;
};

}  // namespace nivlo
