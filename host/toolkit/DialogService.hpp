// Shows what the program asks for.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "host/alerts/gtk/AlertDialog.hpp"
#include "host/alerts/gtk/Clipboard.hpp"
#include "host/dialogs/DialogMessages.hpp"
#include "host/loop/EventSource.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/pick/PickWindow.hpp"

namespace nivlo {

/// Obeys the program at the other end of a socket. startToolkit() must have succeeded.
class DialogService {
 public:
  /// The socket stays the caller's.
  explicit DialogService(int socket);

  /// Returns when the program has closed its end and the clipboard needs this process no longer. Closing the
  /// end takes all windows away.
  void run();

 private:
  void receive();
  void obey(const DialogMessage& message);
  void show(const DialogMessage& message);
  void openPickWindow(const DialogMessage& message);
  void tell(DialogMessage::Kind kind, std::vector<std::int64_t> numbers) const;
  void leave();

  int socket_;
  MainLoop loop_;
  EventSource received_;
  Clipboard clipboard_;
  std::map<std::int64_t, std::unique_ptr<AlertDialog>> alerts_;
  std::vector<PickWallpaper> wallpapers_;
  std::unique_ptr<PickWindow> pickWindow_;
};

}  // namespace nivlo
