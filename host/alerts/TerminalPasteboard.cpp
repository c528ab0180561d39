#include "host/alerts/TerminalPasteboard.hpp"

#include <glib.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

class TerminalPasteboard : public PasteboardDriver {
 public:
  explicit TerminalPasteboard(std::ostream& out) : out_(out) {}

  void setString(const std::string& text) override {
    const Owned<gchar, g_free> base64(
        g_base64_encode(reinterpret_cast<const guchar*>(text.data()), text.size()));
    out_ << "\x1b]52;c;" << base64.get() << '\a' << std::flush;
  }

 private:
  std::ostream& out_;
};

}  // namespace

std::unique_ptr<PasteboardDriver> makeTerminalPasteboard(std::ostream& out) {
  return std::make_unique<TerminalPasteboard>(out);
}

}  // namespace nivlo
