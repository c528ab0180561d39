// Tells the user that a link could not be opened.
#pragma once

#include <memory>
#include <string>

#include "platform/drivers/AlertPresenter.hpp"

namespace nivlo {

/// Shows an alert for a link that somebody has asked for in a dialog and that does not open: a wallpaper says
/// nothing then. Main thread only.
class LinkReports {
 public:
  /// Reports that a link cannot be opened, if a dialog has just been answered. At any other time the
  /// wallpaper only wants to know. An answer is reported on once.
  void refused(const std::string& explanation);
  /// Reports that the program for a link did not start.
  void failed(const std::string& explanation) const;

  /// Returns the same presenter; `reports` notices when the handler of an answer runs.
  static std::unique_ptr<AlertPresenter> noticingAnswers(std::shared_ptr<LinkReports> reports,
                                                         std::unique_ptr<AlertPresenter> alerts);

 private:
  class NoticingAlerts;
  bool answering_ = false;
};

}  // namespace nivlo
