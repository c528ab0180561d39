#include "host/surfaces/windows/SwayTree.hpp"

#include <string>

#include "host/surfaces/windows/JsonRect.hpp"

namespace nivlo {

namespace {

using Json = nlohmann::json;

/// Deeper than anybody nests windows, and not too deep for the stack.
constexpr int kDeepest = 100;

ScreenRect rectOf(const Json& node) {
  const auto& rect = node.at("rect");
  return {lengthFrom(rect.at("x")), lengthFrom(rect.at("y")), lengthFrom(rect.at("width")),
          lengthFrom(rect.at("height"))};
}

/// The node's `rect` leaves its title bar out, which lies directly above it.
ScreenRect withTitleBar(const Json& node) {
  auto rect = rectOf(node);
  const int title = lengthFrom(node.at("deco_rect").at("height"));
  rect.y -= title;
  rect.height += title;
  return rect;
}

class Tree {
 public:
  DesktopWindows read(const Json& root) {
    for (const auto& output : root.at("nodes")) {
      const auto area = rectOf(output);
      if (!isEmpty(area)) {
        desktop_.outputs[output.at("name").get<std::string>()] = area;
      }
      addWindows(output, false, kDeepest);
    }
    return std::move(desktop_);
  }

 private:
  /// Returns whether any window below the node can be seen. Only windows say so themselves.
  bool addWindows(const Json& node, bool fullscreen, int depth) {
    if (depth == 0) {
      return false;
    }
    fullscreen =
        fullscreen || (node.value("type", "") != "workspace" && node.value("fullscreen_mode", 0) != 0);
    if (node.contains("pid")) {
      const bool visible = node.value("visible", false);
      if (visible) {
        desktop_.windows.push_back({withTitleBar(node), fullscreen});
      }
      return visible;
    }
    bool visible = false;
    for (const auto& child : node.at("nodes")) {
      visible = addWindows(child, fullscreen, depth - 1) || visible;
    }
    if (visible) {
      addTabs(node);
    }
    for (const auto& child : node.at("floating_nodes")) {
      visible = addWindows(child, fullscreen, depth - 1) || visible;
    }
    return visible;
  }

  /// The title bars of hidden windows are seen beside that of the shown one: next to it, or above it.
  void addTabs(const Json& node) {
    const auto layout = node.value("layout", "");
    if (layout == "tabbed" || layout == "stacked") {
      auto tabs = rectOf(node);
      tabs.height = rectOf(node.at("nodes").front()).y - tabs.y;
      desktop_.windows.push_back({tabs});
    }
  }

  DesktopWindows desktop_;
};

}  // namespace

std::optional<DesktopWindows> windowsInSwayTree(std::string_view answer) {
  try {
    return Tree().read(Json::parse(answer));
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

bool movesWindows(std::string_view windowEvent) {
  const auto event = Json::parse(windowEvent, nullptr, false);
  const auto change = event.is_object() ? event.find("change") : event.end();
  return change == event.end() || (*change != "title" && *change != "urgent" && *change != "mark");
}

}  // namespace nivlo
