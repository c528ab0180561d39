#include "linux/desktop/session/SleepInhibitor.hpp"

#include <utility>

namespace nivlo {

SleepInhibitor::SleepInhibitor(GDBusConnection* connection) : calls_(connection, "org.freedesktop.login1") {}

void SleepInhibitor::take(std::function<void(const std::string&)> refused) {
  release();
  calls_.call({"/org/freedesktop/login1", "org.freedesktop.login1.Manager", "Inhibit"},
              g_variant_new("(ssss)", "sleep", "nivlo", "The camera is being turned off", "delay"),
              [this, refused = std::move(refused)](const MethodCalls::Reply& reply) {
                if (!reply.values) {
                  refused(reply.error);
                } else if (reply.descriptors) {
                  descriptor_ = Descriptor(g_unix_fd_list_get(reply.descriptors, 0, nullptr));
                }
              });
}

void SleepInhibitor::release() {
  calls_.dropAnswers();
  descriptor_ = Descriptor();
}

}  // namespace nivlo
