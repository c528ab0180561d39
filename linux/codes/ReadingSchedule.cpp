#include "linux/codes/ReadingSchedule.hpp"

#include "linux/codes/InvertedStrategy.hpp"
#include "linux/codes/TurnedStrategy.hpp"
#include "linux/codes/WindowStrategy.hpp"

namespace nivlo {

namespace {

std::unique_ptr<ReadingStrategy> window(Window window, Symbologies symbologies, Effort effort) {
  return std::make_unique<WindowStrategy>(window, symbologies, effort);
}

std::unique_ptr<ReadingStrategy> turned(double degrees) {
  return std::make_unique<TurnedStrategy>(degrees, window({}, Symbologies::All, Effort::Thorough));
}

/// Only matrix codes are printed light on dark.
std::unique_ptr<ReadingStrategy> inverted() {
  return std::make_unique<InvertedStrategy>(window({}, Symbologies::Matrix, Effort::Thorough));
}

}  // namespace

ReadingSchedule makeReadingSchedule() {
  ReadingSchedule schedule;
  auto& strategies = schedule.strategies;
  strategies.push_back(window({}, Symbologies::All, Effort::Quick));
  schedule.mostComplete = strategies.size();
  strategies.push_back(window({}, Symbologies::All, Effort::Thorough));
  strategies.push_back(window({.scale = 2, .sharpening = 1}, Symbologies::All, Effort::Thorough));
  strategies.push_back(window({.scale = 0.5}, Symbologies::All, Effort::Thorough));
  strategies.push_back(turned(45));
  strategies.push_back(
      window({.part = 0.5, .scale = 2, .sharpening = 1}, Symbologies::All, Effort::Thorough));
  strategies.push_back(inverted());
  strategies.push_back(turned(22.5));
  strategies.push_back(window({.scale = 1.5, .sharpening = 2}, Symbologies::Linear, Effort::Thorough));
  strategies.push_back(turned(67.5));
  return schedule;
}

}  // namespace nivlo
