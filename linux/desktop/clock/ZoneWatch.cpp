#include "linux/desktop/clock/ZoneWatch.hpp"

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

ZoneWatch::ZoneWatch(std::filesystem::path file, std::function<void()> changed)
    : file_(std::move(file)), changed_(std::move(changed)) {
  const Owned<GFile, g_object_unref> watched(g_file_new_for_path(file_.c_str()));
  GError* raw = nullptr;
  monitor_.reset(g_file_monitor_file(watched.get(), G_FILE_MONITOR_WATCH_MOVES, nullptr, &raw));
  const Owned<GError, g_error_free> error(raw);
  if (!monitor_) {
    NSLog(
        "clock: cannot notice a change of the time zone: %@; raise fs.inotify.max_user_instances with "
        "sysctl and start Nivlo again",
        error->message);
    return;
  }
  g_signal_connect(monitor_.get(), "changed", G_CALLBACK(onEvent), this);
  zone_ = zone();
}

ZoneWatch::~ZoneWatch() {
  if (monitor_) {
    g_signal_handlers_disconnect_by_data(monitor_.get(), this);
  }
}

void ZoneWatch::onEvent(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent event, gpointer data) {
  // A file that is being written may be incomplete. The end of writing has an event of its own.
  if (event != G_FILE_MONITOR_EVENT_CHANGED) {
    static_cast<ZoneWatch*>(data)->check();
  }
}

/// The link's target and the file's content, because either may change without the other.
std::string ZoneWatch::zone() const {
  std::ifstream file(file_, std::ios::binary);
  const std::string rules{std::istreambuf_iterator<char>(file), {}};
  std::error_code noLink;
  return rules.empty() ? rules : std::filesystem::read_symlink(file_, noLink).string() + '\n' + rules;
}

void ZoneWatch::check() {
  auto found = zone();
  if (!found.empty() && found != zone_) {
    zone_ = std::move(found);
    changed_();
  }
}

}  // namespace nivlo
