#include "host/service/LauncherTexts.hpp"

#include <regex>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <glib.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

// From version 254 on, systemd waits longer before each restart; every version gives up after ten restarts in
// ten minutes. Wrong usage would fail again, so it is not restarted.
constexpr auto kUnit = R"([Unit]
Description=Nivlo, the live camera wallpaper
PartOf=graphical-session.target
After=graphical-session.target pipewire.service wireplumber.service
StartLimitIntervalSec=600
StartLimitBurst=10

[Service]
ExecStart={}
Restart=on-failure
RestartPreventExitStatus=2
RestartSec=2
RestartSteps=6
RestartMaxDelaySec=120

[Install]
WantedBy=graphical-session.target
)";

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

std::string withPreset(const std::string& text, int preset) {
  static const std::regex argument("\"--preset=[0-9]+\"");
  return std::regex_replace(text, argument, fmt::format("\"--preset={}\"", preset),
                            std::regex_constants::format_first_only);
}

}  // namespace nivlo
