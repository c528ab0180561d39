#include "host/surfaces/wayland/WaylandDesktop.hpp"

#include <algorithm>
#include <utility>

#include "host/surfaces/windows/SessionWindows.hpp"

namespace nivlo {

namespace {

std::vector<std::string> namesOf(const WaylandConnection& connection) {
  std::vector<std::string> names;
  for (const auto& output : connection.outputs()) {
    names.push_back(output->name().empty() ? "(unnamed)" : output->name());
  }
  return names;
}

}  // namespace

std::unique_ptr<Surface> WaylandDesktop::open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                              std::string* error) {
  auto connection = WaylandConnection::open(error);
  if (!connection) {
    return nullptr;
  }
  if (!connection->globals().layerShell) {
    *error =
        "this Wayland compositor has no layer shell (zwlr_layer_shell_v1), which a desktop background needs; "
        "use --surface window for a window instead";
    return nullptr;
  }
  return std::unique_ptr<Surface>(new WaylandDesktop(std::move(connection), options, std::move(handlers)));
}

WaylandDesktop::WaylandDesktop(std::unique_ptr<WaylandConnection> connection, const SurfaceOptions& options,
                               SurfaceHandlers handlers)
    : options_(options),
      handlers_(std::move(handlers)),
      connection_(std::move(connection)),
      painter_(connection_->globals(), [this] { handlers_.drawn(); }),
      toplevels_(connection_->bindToplevels(), [this] { updateVisible(); }),
      layer_(options.layer,
             [this] {
               for (const auto& background : backgrounds_) {
                 background->setLayer(layer());
               }
             }),
      awaited_(options.output) {
  followOutputs();
}

WaylandDesktop::~WaylandDesktop() = default;

CGSize WaylandDesktop::size() const {
  const auto size = backgrounds_.empty() ? CGSize() : backgrounds_.front()->output().size();
  return size.width > 0 && size.height > 0
             ? size
             : CGSize{static_cast<double>(options_.width), static_cast<double>(options_.height)};
}

void WaylandDesktop::show(LaidOutView view) {
  painter_.show(std::move(view));
  connection_->start({.outputsChanged =
                          [this] {
                            followOutputs();
                            updateVisible();
                            handlers_.awaits(awaited());
                          },
                      .lost = handlers_.lost});
  places_.emplace(windowsOfSession(), [this] { updateVisible(); });
}

zwlr_layer_shell_v1_layer WaylandDesktop::layer() const {
  return layer_.isBottom() ? ZWLR_LAYER_SHELL_V1_LAYER_BOTTOM : ZWLR_LAYER_SHELL_V1_LAYER_BACKGROUND;
}

bool WaylandDesktop::isWanted(const WaylandOutput& output) const {
  return options_.output.empty() || output.name() == options_.output;
}

void WaylandDesktop::followOutputs() {
  const auto& outputs = connection_->outputs();
  std::erase_if(backgrounds_, [&](const auto& background) {
    return std::none_of(outputs.begin(), outputs.end(),
                        [&](const auto& output) { return output.get() == &background->output(); });
  });
  for (const auto& output : outputs) {
    const auto known = std::find_if(backgrounds_.begin(), backgrounds_.end(), [&](const auto& background) {
      return &background->output() == output.get();
    });
    if (known != backgrounds_.end()) {
      (*known)->outputChanged();
    } else if (isWanted(*output)) {
      backgrounds_.push_back(std::make_unique<LayerBackground>(connection_->globals(), *output, painter_,
                                                               layer(), [this] { updateVisible(); }));
    }
  }
  awaited_.update(!backgrounds_.empty(), namesOf(*connection_));
}

void WaylandDesktop::updateVisible() {
  const bool visible = std::any_of(backgrounds_.begin(), backgrounds_.end(),
                                   [this](const auto& background) { return !isHidden(*background); });
  if (visible != std::exchange(visible_, visible)) {
    handlers_.visible(visible);
  }
}

/// The states of windows say less than their places, which not every compositor tells.
Cover WaylandDesktop::coverOf(const WaylandOutput& output) const {
  const auto cover = places_ ? places_->coverOf(output.name()) : Cover::Unknown;
  return cover != Cover::Unknown ? cover : toplevels_.coverOf(output.handle());
}

/// Starvation means that the background cannot be seen, but not why. If the policy lets some windows cover it
/// without counting as hidden, starvation counts only where no such window can be the reason.
bool WaylandDesktop::isHidden(const LayerBackground& background) const {
  const auto cover = coverOf(background.output());
  const bool starved = background.isStarved();
  switch (options_.pause) {
    case PausePolicy::Covered:
      return starved || cover == Cover::Maximized || cover == Cover::Fullscreen;
    case PausePolicy::Fullscreen:
      return cover == Cover::Fullscreen || (starved && (cover == Cover::Nothing || cover == Cover::Unknown));
    case PausePolicy::Never:
      return starved && cover == Cover::Nothing;
  }
  return false;
}

}  // namespace nivlo
