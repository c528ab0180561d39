// nivlo-dialogs: shows the windows of the program that started it, and keeps the clipboard after that.
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "host/alerts/gtk/Toolkit.hpp"
#include "host/dialogs/DialogMessages.hpp"
#include "host/toolkit/DialogService.hpp"

namespace {

/// Makes the process independent of the terminal, whose Ctrl+C is meant for the program.
void becomeIndependent() {
  setsid();
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace

int main() {
  using namespace nivlo;
  if (fcntl(kDialogSocket, F_SETFD, FD_CLOEXEC) != 0) {
    std::fputs("nivlo-dialogs is a part of Nivlo, which starts it when it needs it\n", stderr);
    return 2;
  }
  becomeIndependent();
  if (!startToolkit()) {
    sendDialogMessage(kDialogSocket, {DialogMessage::Kind::NoDisplay, {}, {}});
    return 1;
  }
  DialogService(kDialogSocket).run();
}
