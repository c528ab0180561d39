// Notices when the time zone changes.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Calls `changed`, from the main thread's GLib loop, when the file defines another zone, or is a link to
/// another one. A file that is missing, as it is for a moment while it is being replaced, does not count as a
/// change. Main thread only. It must not be destroyed within the call.
class ZoneWatch {
 public:
  ZoneWatch(std::filesystem::path file, std::function<void()> changed);
  ~ZoneWatch();
  ZoneWatch(const ZoneWatch&) = delete;
  ZoneWatch& operator=(const ZoneWatch&) = delete;

 private:
  static void onEvent(GFileMonitor* monitor, GFile* file, GFile* other, GFileMonitorEvent event,
                      gpointer data);
  std::string zone() const;
  void check();

  std::filesystem::path file_;
  std::function<void()> changed_;
  Owned<GFileMonitor, g_object_unref> monitor_;
  std::string zone_;
};

}  // namespace nivlo
