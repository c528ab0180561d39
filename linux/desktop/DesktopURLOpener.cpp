#include "linux/desktop/DesktopURLOpener.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <gio/gio.h>

#include "linux/handles/Owned.hpp"
#include "linux/names/HostName.hpp"
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
constexpr std::size_t kLongestNamedScheme = 24;  // characters

/// Links of a scheme, in the middle of a sentence.
std::string linksOf(const std::string& scheme) {
  return scheme.size() > kLongestNamedScheme ? "such links" : scheme + ": links";
}

/// Returns the URL with a host beyond ASCII in the form in which it is looked up, because few programs know
/// it in another one; a URL without such a host stays byte for byte. Nothing if there can be no such host.
std::optional<std::string> withASCIIHost(const std::string& url) {
  constexpr std::string_view kMark = "://";
  const auto mark = url.find(kMark);
  if (mark == std::string::npos || url.find_first_of("/?#") < mark) {
    return url;
  }
  const auto authority = mark + kMark.size();
  const auto end = std::min(url.find_first_of("/?#", authority), url.size());
  const auto user = url.substr(authority, end - authority).rfind('@');
  const auto host = user == std::string::npos ? authority : authority + user + 1;
  const auto hostEnd = std::min(url.find(':', host), end);
  const auto name = asciiHostName(std::string_view(url).substr(host, hostEnd - host));
  return name ? std::optional(url.substr(0, host) + *name + url.substr(hostEnd)) : std::nullopt;
}

/// A link on its way to a program.
struct Launch {
  std::string scheme;
  std::function<void(const std::string&)> failed;
};

void finishLaunch(GObject*, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Launch> launch(static_cast<Launch*>(data));
  GError* raw = nullptr;
  if (!g_app_info_launch_default_for_uri_finish(result, &raw)) {
    const Owned<GError, g_error_free> error(raw);
    NSLog(
        "links: cannot start the program for a link: %@; choose another default application in the "
        "desktop's settings",
        error->message);
    launch->failed(fmt::format("The program that opens {} did not start", linksOf(launch->scheme)));
  }
}

class DesktopURLOpener : public URLOpener {
 public:
  explicit DesktopURLOpener(LinkHandlers handlers) : handlers_(std::move(handlers)) {}

  bool canOpenURL(const std::string& url) override {
    const auto obstacle = obstacleTo(url);
    if (obstacle) {
      NSLog("links: a link was not opened: %@", obstacle->cause);
      handlers_.refused(obstacle->explanation);
    }
    return !obstacle;
  }

  bool openURL(const std::string& url) override {
    if (!canOpenURL(url)) {
      return false;
    }
    auto* launch = new Launch{NSURL::URLWithString(url)->scheme(), handlers_.failed};
    g_app_info_launch_default_for_uri_async(withASCIIHost(url)->c_str(), nullptr, nullptr, finishLaunch,
                                            launch);
    return true;
  }

 private:
  struct Obstacle {
    std::string explanation;  ///< for the user
    const char* cause;        ///< for the log, which holds nothing of what was scanned
  };

  static std::optional<Obstacle> obstacleTo(const std::string& url) {
    const auto parsed = NSURL::URLWithString(url);
    const auto ready = parsed ? withASCIIHost(url) : std::nullopt;
    if (!ready) {
      return Obstacle{"The text is not a valid link", "its text is not a valid URL"};
    }
    if (ready->size() > kLongestURL) {
      return Obstacle{"The link is too long for a program", "it is too long for a program"};
    }
    const auto scheme = parsed->scheme();
    if (std::find(kNeverOpened.begin(), kNeverOpened.end(), scheme) != kNeverOpened.end()) {
      return Obstacle{fmt::format("Nivlo does not open {}", linksOf(scheme)),
                      "links of its scheme could do harm"};
    }
    const Owned<GAppInfo, g_object_unref> handler(g_app_info_get_default_for_uri_scheme(scheme.c_str()));
    if (!handler) {
      return Obstacle{fmt::format("No program opens {}", linksOf(scheme)),
                      "no program is registered for its scheme; install one that opens such links"};
    }
    return std::nullopt;
  }

  LinkHandlers handlers_;
};

}  // namespace

std::unique_ptr<URLOpener> makeDesktopURLOpener(LinkHandlers handlers) {
  return std::make_unique<DesktopURLOpener>(std::move(handlers));
}

}  // namespace nivlo
