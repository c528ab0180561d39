// Permits or forbids looking for codes.
#pragma once

#include <atomic>
#include <memory>

#include "host/show/LookRule.hpp"
#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Permits looking for codes while the user has scanning on and no dialog waits for a choice.
///
/// A wallpaper does not remember either. It looks for codes again whenever one of its dialogs is answered,
/// also after the user has turned scanning off meanwhile, and whenever options are set, also while a dialog
/// is open. So the host keeps the reader itself from looking, which holds for every wallpaper.
class ScanPermit : public LookRule {
 public:
  /// Main thread only.
  void setScanning(bool on) { scanning_ = on; }
  /// Main thread only. Each question that is asked must be answered.
  void questionAsked() { ++openQuestions_; }
  void questionAnswered() { --openQuestions_; }

  bool mayLook() const override { return scanning_ && openQuestions_ == 0; }

 private:
  std::atomic<bool> scanning_{true};
  std::atomic<int> openQuestions_{0};
};

/// Returns the same presenter, which withholds the permit while an alert that offers a choice of buttons is
/// open. An alert with a single button only tells something, so scanning goes on behind it.
std::unique_ptr<AlertPresenter> withholding(std::shared_ptr<ScanPermit> permit,
                                            std::unique_ptr<AlertPresenter> alerts);

}  // namespace nivlo
