#include "host/service/LauncherTexts.hpp"

#include <algorithm>
#include <regex>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <glib.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

// Only keys that systemd 252 knows. A compositor that comes late has more than a minute and a half; then, or
// when the program crashes again and again, systemd gives up. Wrong usage would fail again, so it is not
// restarted.
constexpr auto kUnit = R"([Unit]
Description=Nivlo, the live camera wallpaper
PartOf=graphical-session.target
After=graphical-session.target pipewire.service wireplumber.service
StartLimitIntervalSec=600
StartLimitBurst=20

[Service]
ExecStart={}
Restart=on-failure
RestartPreventExitStatus=2
RestartSec=5
KillMode=process

[Install]
WantedBy=graphical-session.target
)";

constexpr auto kBundleOption = "--bundle=";

std::string doubled(std::string_view text, std::string_view characters) {
  std::string result;
  for (const char c : text) {
    result.append(characters.find(c) != std::string_view::npos ? 2 : 1, c);
  }
  return result;
}

/// Quotes a word for a unit. Within quotes systemd still reads C escapes, "%" as the start of a specifier
/// and, except in the program's path, "$" as the start of a variable.
std::string unitWord(const std::string& word, bool isProgram) {
  const Owned<gchar, g_free> escaped(g_strescape(doubled(word, isProgram ? "%" : "%$").c_str(), nullptr));
  return fmt::format("\"{}\"", escaped.get());
}

/// Quotes a word for a desktop entry. Within quotes, four characters need a backslash, and "%" would start a
/// field code. The key file that the result is put into adds another level of escapes.
std::string execWord(const std::string& word) {
  std::string result;
  for (const char c : doubled(word, "%")) {
    if (std::string_view("\"`$\\").find(c) != std::string_view::npos) {
      result += '\\';
    }
    result += c;
  }
  return fmt::format("\"{}\"", result);
}

/// Returns whether the word, quoted or not, gives a value to the option.
bool gives(std::string_view word, std::string_view option) {
  word.remove_prefix(word.starts_with('"') ? 1 : 0);
  return word.starts_with(option) && word.substr(option.size()).starts_with('=');
}

/// Changes the words of a command line, which stay quoted as they are. `bundle` is the quoted option of that
/// name, or empty.
std::string withWallpaper(const std::string& line, const std::string& bundle, int preset) {
  static const std::regex kWord(R"("(?:[^"\\]|\\.)*"|\S+)");
  std::vector<std::string> words;
  std::string earlierBundle;
  for (std::sregex_iterator match(line.begin(), line.end(), kWord), end; match != end; ++match) {
    words.push_back(match->str());
    if (gives(words.back(), "--bundle")) {
      earlierBundle = words.back();
    }
  }
  std::erase_if(words, [&](const std::string& word) {
    const bool forEarlier = gives(word, "--qr") || gives(word, "--camera");
    return gives(word, "--preset") || gives(word, "--bundle") || (forEarlier && bundle != earlierBundle);
  });
  words.push_back(fmt::format("\"--preset={}\"", preset));
  if (!bundle.empty()) {
    words.push_back(bundle);
  }
  return fmt::format("{}", fmt::join(words, " "));
}

}  // namespace

std::string unitText(const LaunchCommand& command) {
  std::vector<std::string> words;
  for (const auto& word : command) {
    words.push_back(unitWord(word, words.empty()));
  }
  return fmt::format(kUnit, fmt::join(words, " "));
}

std::string autostartText(const LaunchCommand& command) {
  std::vector<std::string> words;
  for (const auto& word : command) {
    words.push_back(execWord(word));
  }
  const Owned<GKeyFile, g_key_file_unref> entry(g_key_file_new());
  const auto set = [&](const char* key, const std::string& value) {
    g_key_file_set_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, key, value.c_str());
  };
  set(G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
  set(G_KEY_FILE_DESKTOP_KEY_NAME, "Nivlo");
  set(G_KEY_FILE_DESKTOP_KEY_COMMENT, "The live camera wallpaper");
  set(G_KEY_FILE_DESKTOP_KEY_EXEC, fmt::format("{}", fmt::join(words, " ")));
  const Owned<gchar, g_free> text(g_key_file_to_data(entry.get(), nullptr, nullptr));
  return text.get();
}

std::string unitWithWallpaper(const std::string& text, const std::string& bundle, int preset) {
  constexpr std::string_view kKey = "\nExecStart=";
  const auto key = text.find(kKey);
  if (key == std::string::npos) {
    return text;
  }
  const auto start = key + kKey.size();
  const auto end = std::min(text.find('\n', start), text.size());
  const auto option = bundle.empty() ? "" : unitWord(kBundleOption + bundle, false);
  return text.substr(0, start) + withWallpaper(text.substr(start, end - start), option, preset) +
         text.substr(end);
}

std::string autostartWithWallpaper(const std::string& text, const std::string& bundle, int preset) {
  const Owned<GKeyFile, g_key_file_unref> entry(g_key_file_new());
  g_key_file_load_from_data(
      entry.get(), text.c_str(), text.size(),
      static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS), nullptr);
  const Owned<gchar, g_free> line(
      g_key_file_get_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
  if (!line) {
    return text;
  }
  const auto option = bundle.empty() ? "" : execWord(kBundleOption + bundle);
  g_key_file_set_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_EXEC,
                        withWallpaper(line.get(), option, preset).c_str());
  const Owned<gchar, g_free> changed(g_key_file_to_data(entry.get(), nullptr, nullptr));
  return changed.get();
}

}  // namespace nivlo
