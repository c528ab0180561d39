#include "host/alerts/DialogConversation.hpp"

#include <utility>

#include <fcntl.h>

#include "host/dialogs/DialogProcess.hpp"

namespace nivlo {

std::unique_ptr<DialogConversation> DialogConversation::start(Heard heard, Ended ended) {
  auto socket = startDialogProcess();
  if (socket.get() < 0) {
    return nullptr;
  }
  fcntl(socket.get(), F_SETFL, O_NONBLOCK);
  return std::unique_ptr<DialogConversation>(
      new DialogConversation(std::move(socket), std::move(heard), std::move(ended)));
}

DialogConversation::DialogConversation(Descriptor socket, Heard heard, Ended ended)
    : socket_(std::move(socket)),
      heard_(std::move(heard)),
      ended_(std::move(ended)),
      received_(EventSource::onReadable(socket_.get(), [this] { receive(); })) {}

bool DialogConversation::send(const DialogMessage& message) const {
  return sendDialogMessage(socket_.get(), message);
}

void DialogConversation::receive() {
  // Copies outlive this object, which the callee may destroy.
  if (const auto message = receiveDialogMessage(socket_.get())) {
    const auto heard = heard_;
    heard(*message);
  } else {
    const auto ended = ended_;
    ended();
  }
}

}  // namespace nivlo
