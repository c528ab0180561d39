#include "host/dialogs/DialogProcess.hpp"

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include <gio/gio.h>
#include <sys/socket.h>

#include "host/dialogs/DialogMessages.hpp"
#include "linux/handles/Owned.hpp"
#include "linux/program/ProgramFile.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

void logFailure(const std::string& cause) {
  NSLog(
      "dialogs: nivlo-dialogs could not be started (%@); check the limits on processes and open files, or "
      "reinstall Nivlo",
      cause);
}

}  // namespace

Descriptor startDialogProcess() {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    logFailure(std::strerror(errno));
    return Descriptor();
  }
  Descriptor ours(ends[0]);
  const Owned<GSubprocessLauncher, g_object_unref> launcher(
      g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDOUT_SILENCE));
  g_subprocess_launcher_take_fd(launcher.get(), ends[1], kDialogSocket);
  const auto program = (programFolder() / installedHelpers() / "nivlo-dialogs").lexically_normal().string();
  GError* raw = nullptr;
  // GLib also waits for the process's end in place of its parent.
  const Owned<GSubprocess, g_object_unref> process(
      g_subprocess_launcher_spawn(launcher.get(), &raw, program.c_str(), nullptr));
  if (!process) {
    const Owned<GError, g_error_free> error(raw);
    logFailure(error->message);
    return Descriptor();
  }
  return ours;
}

}  // namespace nivlo
