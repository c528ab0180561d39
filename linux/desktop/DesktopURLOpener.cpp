#include "linux/desktop/DesktopURLOpener.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include <gio/gio.h>

#include "linux/handles/Owned.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSURL.hpp"

namespace nivlo {

namespace {

constexpr std::array<std::string_view, 13> kNeverOpened{
    "about",   "admin",  "blob",     "computer", "data",     "file",       "javascript",
    "network", "recent", "resource", "trash",    "vbscript", "view-source"};
// Bytes. The application gets the link as an argument, which the kernel limits to 128 KiB including the NUL
// at its end (MAX_ARG_STRLEN).
constexpr std::size_t kLongestURL = 131071;

void reportLaunch(GObject*, GAsyncResult* result, gpointer) {
  GError* raw = nullptr;
  if (!g_app_info_launch_default_for_uri_finish(result, &raw)) {
    const Owned<GError, g_error_free> error(raw);
    NSLog(
        "links: cannot start the program for a link: %@; choose another default application in the "
        "desktop's settings",
        error->message);
  }
}

class DesktopURLOpener : public URLOpener {
 public:
  bool canOpenURL(const std::string& url) override {
    const auto parsed = NSURL::URLWithString(url);
    if (!parsed || url.size() > kLongestURL) {
      return false;
    }
    const auto scheme = parsed->scheme();
    if (std::find(kNeverOpened.begin(), kNeverOpened.end(), scheme) != kNeverOpened.end()) {
      return false;
    }
    const Owned<GAppInfo, g_object_unref> handler(g_app_info_get_default_for_uri_scheme(scheme.c_str()));
    return handler != nullptr;
  }

  bool openURL(const std::string& url) override {
    if (!canOpenURL(url)) {
      return false;
    }
    g_app_info_launch_default_for_uri_async(url.c_str(), nullptr, nullptr, reportLaunch, nullptr);
    return true;
  }
};

}  // namespace

std::unique_ptr<URLOpener> makeDesktopURLOpener() { return std::make_unique<DesktopURLOpener>(); }

}  // namespace nivlo
