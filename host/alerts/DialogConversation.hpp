// The program's end of a conversation with nivlo-dialogs.
#pragma once

#include <functional>
#include <memory>

#include "host/dialogs/DialogMessages.hpp"
#include "host/loop/EventSource.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// Lets nivlo-dialogs run for as long as this object lives, without ever waiting for it. Main thread only.
class DialogConversation {
 public:
  /// Called for each message. The callee may destroy the conversation.
  using Heard = std::function<void(const DialogMessage& message)>;
  /// Called once, when nivlo-dialogs has ended by itself or has sent something that is not a message. The
  /// callee should destroy the conversation.
  using Ended = std::function<void()>;

  /// Returns null, and logs the cause, if nivlo-dialogs cannot be started.
  static std::unique_ptr<DialogConversation> start(Heard heard, Ended ended);

  /// Returns false if the message is too large, or nivlo-dialogs has ended or takes no more messages for now.
  bool send(const DialogMessage& message) const;

 private:
  DialogConversation(Descriptor socket, Heard heard, Ended ended);
  void receive();

  Descriptor socket_;
  Heard heard_;
  Ended ended_;
  EventSource received_;
};

}  // namespace nivlo
