// Notices another time zone.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Calls `changed` from the main thread's GLib loop when the file, or the link in its place, names another
/// zone. A file that is missing for the moment, as while it is replaced, is no change. Main thread only; not
/// to be destroyed within the call.
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
  void look();

  std::filesystem::path file_;
  std::function<void()> changed_;
  Owned<GFileMonitor, g_object_unref> monitor_;
  std::string zone_;
};

}  // namespace nivlo
