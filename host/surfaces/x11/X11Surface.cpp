#include "host/surfaces/x11/X11Surface.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace nivlo {

X11Surface::X11Surface(std::unique_ptr<X11Connection> connection, PausePolicy pause, SurfaceHandlers handlers)
    : handlers_(std::move(handlers)),
      pause_(pause),
      connection_(std::move(connection)),
      power_(*connection_) {}

void X11Surface::show(LaidOutView view) {
  view_ = std::move(view);
  openCanvases();
  connection_->listen({.event =
                           [this](const auto& event) {
                             for (const auto& [name, canvas] : canvases_) {
                               canvas->handle(event);
                             }
                             handle(event);
                           },
                       .settled =
                           [this] {
                             settle();
                             reportVisibility();
                             draw();
                           },
                       .lost = [this] { handlers_.lost("the X11 display is gone"); }});
  clock_.emplace(view_, [this] {
    newPicture_ = true;
    connection_->dispatch();
  });
  start_ = EventSource::onTimeout(std::chrono::milliseconds{0}, [this] {
    power_.watch();
    connection_->dispatch();
  });
  connection_->flush();
}

bool X11Surface::isSeen(const X11Canvas& canvas) const {
  return power_.isOn() && canvas.isMapped() && !isCovered(canvas);
}

void X11Surface::reportVisibility() {
  const bool visible = std::any_of(canvases_.begin(), canvases_.end(),
                                   [this](const auto& item) { return isSeen(*item.second); });
  if (visible != std::exchange(visible_, visible)) {
    handlers_.visible(visible);
  }
}

bool X11Surface::isReady() const {
  return std::all_of(canvases_.begin(), canvases_.end(),
                     [](const auto& item) { return item.second->isReady(); });
}

void X11Surface::draw() {
  if (!isReady()) {
    return;
  }
  const bool newPicture = std::exchange(newPicture_, false);
  bool drawn = false;
  for (const auto& [name, canvas] : canvases_) {
    if ((newPicture || canvas->isStale()) && isSeen(*canvas)) {
      drawn = canvas->draw(renderer_, view_) || drawn;
    }
  }
  connection_->flush();
  if (newPicture && drawn) {
    handlers_.drawn();
  }
}

}  // namespace nivlo
