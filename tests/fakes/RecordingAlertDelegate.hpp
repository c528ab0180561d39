// An alert delegate that records its notifications.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/UIKit/UIAlertView.hpp"

namespace nivlo {

/// Adds one line for each notification, which begins with the delegate's name. It always disables the first
/// other button. `lines` must outlive it.
class RecordingAlertDelegate : public UIAlertViewDelegate {
 public:
  RecordingAlertDelegate(std::vector<std::string>& lines, std::string name)
      : lines_(lines), name_(std::move(name)) {}
  void willPresentAlertView(UIAlertView&) override { add("will present"); }
  void didPresentAlertView(UIAlertView&) override { add("did present"); }
  void alertViewCancel(UIAlertView&) override { add("cancel"); }
  void alertViewClickedButtonAtIndex(UIAlertView&, long i) override { add("tap " + std::to_string(i)); }
  void alertViewWillDismissWithButtonIndex(UIAlertView&, long i) override {
    add("will dismiss " + std::to_string(i));
  }
  void alertViewDidDismissWithButtonIndex(UIAlertView&, long i) override {
    add("did dismiss " + std::to_string(i));
  }
  bool alertViewShouldEnableFirstOtherButton(UIAlertView&) override { return false; }

 private:
  void add(const std::string& what) { lines_.push_back(name_ + " " + what); }

  std::vector<std::string>& lines_;
  std::string name_;
};

}  // namespace nivlo
